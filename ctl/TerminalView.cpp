#include "ctl/TerminalView.h"

#include "bridge/LocalizedMessage.h"
#include "platform/Platform.h"

namespace {

/// The report says it, and the alert's advice is about windows.
bool isToldByReport(const Alert &alert) {
  return alert.key == QStringLiteral("NoProblemsTitle");
}

/// The work goes on behind it.
bool isOnlyAWarning(const Alert &alert) {
  return alert.key == QStringLiteral("LowSpaceTitle");
}

}  // namespace

int TerminalView::runAlert(const Alert &alert) {
  bar.clear();
  if (isToldByReport(alert)) return 0;
  lines.say(printable(alert.title));
  for (const QString &line : alert.message.split(u'\n', Qt::SkipEmptyParts))
    lines.err << "  " << printable(line).toStdString() << '\n';
  lines.err.flush();
  const bool hasSafeAnswer = alert.safeButton >= 0, isChoice = alert.buttons.size() > 1;
  if (isChoice && hasSafeAnswer && onQuestion) {
    if (const std::optional<int> answer = onQuestion(alert)) return *answer;
  }
  if (merging && !hasSafeAnswer && (alert.critical || isChoice)) problems.push_back(alert);
  failed = failed || (alert.critical && !isOnlyAWarning(alert));
  return hasSafeAnswer ? alert.safeButton : int(alert.buttons.size()) - 1;
}

void TerminalView::beginMerge() {
  merging = true;
  bar.setSubText({});
}

void TerminalView::setProgressSubText(const QString &text) {
  const bool isStep = merging && text != localizedMessage(QStringLiteral("Canceling"));
  bar.setSubText(isStep ? QString() : text);
}

void TerminalView::beginSheet(const Alert &alert, std::function<void(int)> done) {
  const int button = runAlert(alert);
  if (done) platform().mainLoop->post([done = std::move(done), button] { done(button); });
}

void TerminalView::setUnresponsiveWarningVisible(bool visible) {
  if (visible && !warnsUnresponsive) {
    bar.clear();
    lines.say(localizedMessage(QStringLiteral("UnresponsiveWarning")));
  }
  warnsUnresponsive = visible;
}

void TerminalView::endProgressSheet() {
  progressShown = false;
  bar.clear();
}

void TerminalView::interrupt() {
  interrupted = true;
  if (cancelEnabled && onCancel) onCancel();
}

void TerminalView::setCancelEnabled(bool enabled) {
  cancelEnabled = enabled;
  // The load that allows this may start the scan that is to be cancelled, so the cancel waits for it.
  if (enabled && interrupted) platform().mainLoop->post([this] { interrupt(); });
}
