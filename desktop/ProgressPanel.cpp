#include "desktop/ProgressPanel.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "bridge/LocalizedMessage.h"
#include "desktop/Icons.h"
#include "desktop/NoteStrip.h"
#include "desktop/ProblemWindow.h"
#include "desktop/SecondaryLabel.h"
#include "desktop/ToolTips.h"

namespace {
constexpr int kSteps = 10'000;
}

ProgressPanel::ProgressPanel(QWidget *attachedTo, std::function<void()> cancelPressed)
    : SheetDialog(attachedTo),
      quoteLabel(new SecondaryLabel),
      subLabel(new QLabel),
      bar(new QProgressBar),
      warning(new NoteStrip(localizedMessage(QStringLiteral("UnresponsiveWarning")))) {
  setObjectName(QStringLiteral("progressSheet"));
  setPicture(icons::application());
  QFont italic = quoteLabel->font();
  italic.setItalic(true);
  quoteLabel->setFont(italic);
  subLabel->setObjectName(QStringLiteral("progressSubText"));
  subLabel->setTextFormat(Qt::PlainText);
  subLabel->setMinimumHeight(subLabel->fontMetrics().height());
  bar->setTextVisible(false);
  bar->setObjectName(QStringLiteral("progressBar"));
  contents()->addWidget(quoteLabel);
  contents()->addWidget(bar);
  contents()->addWidget(subLabel);
  warning->setObjectName(QStringLiteral("unresponsiveWarning"));
  warning->hide();
  contents()->addWidget(warning);
  cancel = addButton(localizedMessage(QStringLiteral("Progress-Cancel")), 1);
  cancel->setObjectName(QStringLiteral("progressCancel"));
  cancel->disconnect();
  connect(cancel, &QPushButton::clicked, this, std::move(cancelPressed));
  updateBar();
}

void ProgressPanel::setQuote(const QString &quote) {
  quoteLabel->setText(quote);
}

void ProgressPanel::setSubText(const QString &found) {
  subLabel->setText(subLabel->fontMetrics().elidedText(found, Qt::ElideMiddle, kTextWidth));
  subLabel->setToolTip(toolTips::fromPlainText(found));
  repaint();
}

void ProgressPanel::setIndeterminate(bool indeterminate) {
  isIndeterminate = indeterminate;
  updateBar();
}

void ProgressPanel::setMaximum(double newMaximum) {
  if (newMaximum != maximum) value = 0.0;
  maximum = newMaximum;
  updateBar();
}

void ProgressPanel::setValue(double newValue) {
  value = newValue == 0.0 ? 0.0 : qMax(value, newValue);
  updateBar();
}

void ProgressPanel::updateBar() {
  bar->setRange(0, isIndeterminate ? 0 : kSteps);
  const double share = maximum > 0 ? value / maximum : 0.0;
  if (!isIndeterminate) bar->setValue(int(qBound(0.0, share, 1.0) * kSteps));
  repaint();
}

void ProgressPanel::setCancelEnabled(bool enabled) {
  cancel->setEnabled(enabled);
  repaint();
}

void ProgressPanel::setWarningVisible(bool visible) {
  if (warning->isHidden() != visible) return;
  warning->setVisible(visible);
  adjustSize();
  if (isVisible()) place();
}

void ProgressPanel::setOneLineTitle(const QString &newTitle) {
  setTitle(titleMetrics().elidedText(newTitle.simplified(), Qt::ElideMiddle, kTextWidth));
}

void ProgressPanel::setLow(bool low) {
  if (hangsLow == low) return;
  hangsLow = low;
  if (isVisible()) place();
}

int ProgressPanel::topOn(const QWidget &host) const {
  const auto *window = dynamic_cast<const ProblemWindow *>(&host);
  return hangsLow && window ? qMax(window->sheetTop(), window->sheetBottom() - height())
                            : SheetDialog::topOn(host);
}

void ProgressPanel::reject() {
  if (cancel->isEnabled()) cancel->click();
}
