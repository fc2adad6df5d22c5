#include "desktop/CommandBar.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include "desktop/Colours.h"
#include "desktop/ToolTips.h"

namespace {

void follow(QPushButton *button, const QAction *action) {
  button->setText(action->text());
  button->setMinimumWidth(button->fontMetrics().horizontalAdvance(action->text()) + 32);
  button->setEnabled(action->isEnabled());
  const QString keys = action->shortcut().toString(QKeySequence::NativeText);
  const QString text =
      keys.isEmpty() ? action->toolTip() : action->toolTip() + QStringLiteral(" (%1)").arg(keys);
  button->setToolTip(toolTips::fromPlainText(text));
}

}  // namespace

CommandBar::CommandBar() : row(new QHBoxLayout(this)), label(new QLabel) {
  row->setContentsMargins(12, 6, 12, 6);
  row->setSpacing(8);
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  label->setObjectName(QStringLiteral("status"));
  row->addWidget(label, 1);
}

void CommandBar::setText(const QString &text) {
  label->setText(text);
}

QPushButton *CommandBar::buttonFor(QAction *action) {
  auto *button = new QPushButton;
  button->setObjectName(QStringLiteral("button-") + action->objectName());
  follow(button, action);
  connect(button, &QPushButton::clicked, action, &QAction::trigger);
  connect(action, &QAction::changed, button, [button, action] { follow(button, action); });
  return button;
}

void CommandBar::addButton(QAction *action) {
  QPushButton *button = buttonFor(action);
  row->addWidget(button);
  buttons.push_back(button);
  setMinimumHeight(button->sizeHint().height() + 12);
}

void CommandBar::setButtonsVisible(bool visible) {
  for (QPushButton *button : buttons) button->setVisible(visible);
}

void CommandBar::paintEvent(QPaintEvent *) {
  QPainter painter(this);
  painter.fillRect(QRect(0, 0, width(), 1), colours::separator(palette()));
}
