#include "desktop/EmptyPage.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "desktop/Colours.h"

namespace {
constexpr int kPictureSide = 72;
constexpr int kTextWidth = 420;
}  // namespace

EmptyPage::EmptyPage() : picture(new QLabel), titleLabel(new QLabel), textLabel(new QLabel) {
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  picture->setAlignment(Qt::AlignCenter);
  titleLabel->setAlignment(Qt::AlignCenter);
  QFont large = titleLabel->font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  large.setBold(true);
  titleLabel->setFont(large);
  textLabel->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  textLabel->setWordWrap(true);
  textLabel->setFixedWidth(kTextWidth);
  auto *row = new QHBoxLayout;
  row->addStretch();
  for (QPushButton *&button : pushButtons) {
    button = new QPushButton;
    row->addWidget(button);
  }
  row->addStretch();
  for (size_t i = 0; i < 2; ++i) {
    connect(pushButtons[i], &QPushButton::clicked, this, [this, i] {
      if (i < contents.size() && contents[i].pressed) contents[i].pressed();
    });
  }
  auto *column = new QVBoxLayout(this);
  column->setSpacing(10);
  column->addStretch(3);
  column->addWidget(picture);
  column->addWidget(titleLabel);
  column->addWidget(textLabel, 0, Qt::AlignHCenter);
  column->addSpacing(8);
  column->addLayout(row);
  column->addStretch(4);
}

void EmptyPage::setContents(icons::Shape shape, const QString &title, const QString &text,
                            std::vector<Button> buttons) {
  shown = shape;
  titleLabel->setText(title);
  textLabel->setText(text);
  textLabel->setMinimumHeight(textLabel->heightForWidth(kTextWidth));
  contents = std::move(buttons);
  for (size_t i = 0; i < 2; ++i) {
    pushButtons[i]->setVisible(i < contents.size());
    if (i < contents.size()) pushButtons[i]->setText(contents[i].label);
  }
  updateColours();
}

void EmptyPage::changeEvent(QEvent *event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) updateColours();
}

void EmptyPage::updateColours() {
  const QPixmap drawn = icons::icon(shown).pixmap(QSize(kPictureSide, kPictureSide), devicePixelRatioF());
  picture->setPixmap(drawn);
  textLabel->setPalette(colours::withSecondaryText(palette()));
}
