#include "desktop/SheetDialog.h"

#include <QCheckBox>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/Colours.h"
#include "desktop/ProblemWindow.h"
#include "desktop/SheetText.h"
#include "support/Preferences.h"

namespace {
constexpr int kPictureSide = 48;
/// What a sheet leaves free of its window's lower edge.
constexpr int kMargin = 12;
/// A text is never cut below this, about fifteen lines, however small the window is.
constexpr int kLeastTextHeight = 260;
}  // namespace

SheetDialog::SheetDialog(QWidget *attachedTo)
    : QDialog(attachedTo, Qt::Dialog | Qt::FramelessWindowHint),
      picture(new QLabel),
      title(new QLabel),
      text(new SheetText(kTextWidth)),
      column(new QVBoxLayout),
      buttonRow(new QHBoxLayout) {
  setWindowModality(Qt::WindowModal);
  QFont bold = title->font();
  bold.setBold(true);
  bold.setPointSizeF(bold.pointSizeF() * 1.15);
  title->setFont(bold);
  title->setWordWrap(true);
  title->setFixedWidth(kTextWidth);
  title->setTextFormat(Qt::PlainText);
  text->hide();
  column->setSpacing(10);
  column->addWidget(title);
  column->addWidget(text);
  buttonRow->addStretch();
  picture->setFixedSize(kPictureSide, kPictureSide);
  picture->hide();
  auto *top = new QHBoxLayout;
  top->setSpacing(18);
  top->addWidget(picture, 0, Qt::AlignTop);
  top->addLayout(column, 1);
  auto *all = new QVBoxLayout(this);
  all->setContentsMargins(24, 20, 24, 20);
  all->setSpacing(18);
  all->addLayout(top);
  all->addLayout(buttonRow);
  all->setSizeConstraint(QLayout::SetFixedSize);
  if (attachedTo) attachedTo->window()->installEventFilter(this);
}

void SheetDialog::setPicture(const QIcon &icon) {
  picture->setPixmap(icon.pixmap(QSize(kPictureSide, kPictureSide), devicePixelRatioF()));
  picture->show();
}

void SheetDialog::setTitle(const QString &newTitle) {
  title->setText(newTitle);
  setWindowTitle(newTitle);
}

void SheetDialog::setText(const QString &newText) {
  text->setWholeText(newText);
  text->setVisible(!newText.isEmpty());
}

void SheetDialog::fit(int spare) {
  if (spare < 0) text->setShownHeight(qMax(kLeastTextHeight, text->wholeHeight() + spare));
}

void SheetDialog::setTitleWidth(int width) {
  title->setFixedWidth(width);
}

QFontMetrics SheetDialog::titleMetrics() const {
  return title->fontMetrics();
}

QPushButton *SheetDialog::addButton(const QString &label, int index) {
  auto *button = new QPushButton(label);
  button->setMinimumWidth(92);
  button->setDefault(index == 0);
  button->setAutoDefault(index == 0);
  buttonRow->insertWidget(1, button);
  if (index == 0) button->setFocus();
  connect(button, &QPushButton::clicked, this, [this, index] { choose(index); });
  return button;
}

void SheetDialog::begin() {
  adjustSize();
  if (const QWidget *host = parentWidget() ? parentWidget()->window() : nullptr) {
    fit(host->height() - topOn(*host) - height() - kMargin);
    adjustSize();
  }
  place();
  show();
  raise();
}

void SheetDialog::addSuppression(const QString &words, const QString &preference) {
  suppression = new QCheckBox(words);
  suppression->setObjectName(preference);
  suppression->setChecked(prefs::isTrue(preference));
  column->addSpacing(4);
  column->addWidget(suppression);
}

void SheetDialog::choose(int index) {
  if (suppression && index != escapeIndex) {
    const QString preference = suppression->objectName();
    suppression->isChecked() ? prefs::set(preference, true) : prefs::remove(preference);
  }
  const auto answer = std::move(onChosen);
  dismiss();
  if (answer) answer(index);
}

void SheetDialog::dismiss() {
  onChosen = nullptr;
  done(QDialog::Accepted);
}

void SheetDialog::reject() {
  choose(escapeIndex);
}

void SheetDialog::place() {
  const QWidget *host = parentWidget() ? parentWidget()->window() : nullptr;
  if (!host || !host->isVisible()) return;
  move(host->mapToGlobal(QPoint((host->width() - width()) / 2, topOn(*host))));
}

int SheetDialog::topOn(const QWidget &host) const {
  const auto *window = dynamic_cast<const ProblemWindow *>(&host);
  return window ? window->sheetTop() : 12;
}

bool SheetDialog::eventFilter(QObject *watched, QEvent *event) {
  if (isVisible() && (event->type() == QEvent::Move || event->type() == QEvent::Resize)) place();
  return QDialog::eventFilter(watched, event);
}

void SheetDialog::paintEvent(QPaintEvent *) {
  QPainter painter(this);
  painter.setPen(
      colours::blend(palette().color(QPalette::Window), palette().color(QPalette::WindowText), 0.4));
  painter.setBrush(palette().color(QPalette::Window));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
