#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "app/state/ProblemView.h"
#include "ctl/Command.h"
#include "ctl/EventLoop.h"
#include "values/Value.h"

class Application;
class TerminalView;

/// Loads a library and looks for problems in it, as the window's application does. What it sets is forgotten
/// at the end. An interruption gives what was found so far and exit code 1.
class ScanCommand : public Command {
 public:
  explicit ScanCommand(LoopRunner loopRunner = runEventLoop) : runLoop(std::move(loopRunner)) {}

  QString name() const override { return QStringLiteral("scan"); }
  QString usage() const override {
    return QStringLiteral(
        "[--library FILE] [--media DIR] [--pref KEY=VALUE]... [--problem duplicates|names|orphans|missing] "
        "[--json] [--rows]");
  }
  QString help() const override { return QStringLiteral("looks for problems in the library"); }
  int run(const QStringList &arguments, Terminal &terminal) override;

 private:
  /// A command line understood.
  struct Request {
    QString library, media;
    std::vector<std::pair<QString, Value>> settings;
    std::optional<ProblemTab> only;
    bool json = false, rows = false;
  };
  static bool parse(const QStringList &arguments, Request *request, QString *error);
  static void applySettings(const Request &request, Application &application, Terminal &terminal);
  int scan(const Request &request, Terminal &terminal) const;
  static int report(const Request &request, Application &application, const TerminalView &view,
                    Terminal &terminal);

  const LoopRunner runLoop;
};
