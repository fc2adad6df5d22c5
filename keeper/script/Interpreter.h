#pragma once

#include <QString>
#include <atomic>
#include <memory>
#include <vector>

#include "keeper/script/ScriptObject.h"
#include "platform/ScriptHost.h"

/// Beyond these a script is stopped with an error of the language. A text may have 64 MiB whatever they say;
/// beyond that it is -2708 too.
struct ScriptLimits {
  /// Handlers inside handlers; beyond it -2706.
  int depth = 512;
  /// Statements, expressions and rounds of loops; beyond it -2707, which no `try` catches.
  qint64 steps = 10'000'000;
  /// What the script's texts, lists and records may take together, in bytes; beyond it -2708.
  qint64 memory = 512LL * 1024 * 1024;
  /// Seconds that one command may take where no `with timeout` says otherwise; a command that took longer
  /// has been obeyed, but the script gets -1712.
  double commandSeconds = 120.0;
};

/// Runs script texts against applications in this process. Scripts share nothing but the kept parses: the
/// text item delimiters, globals and loaded libraries begin afresh with each. The thread that runs scripts
/// needs 8 MiB of stack, the usual size. One thread, but for `stop`. Uses `platform().clock`.
class Interpreter {
 public:
  /// The applications outlive the interpreter.
  explicit Interpreter(ScriptApplication &application, const ScriptLimits &limits = {});
  explicit Interpreter(std::vector<ScriptApplication *> applications, const ScriptLimits &limits = {});
  ~Interpreter();

  /// Parses and runs a script text; a text that was run lately is not parsed again. Answers a result (lists
  /// as lists; records, things, dates, constants and no result as none) or a failure, whose range is a
  /// stretch of `source`. Never throws.
  [[nodiscard]] ScriptOutcome run(const QString &source);

  /// The script that runs ends at its next step with -128, which no `try` catches, and so do all scripts
  /// after it, at once: for the end of a process. A command that an application is obeying is not
  /// interrupted. Any thread.
  void stop() { stopped.store(true, std::memory_order_relaxed); }

 private:
  struct Kept;

  ScriptOutcome evaluate(const QString &source);

  std::vector<ScriptApplication *> applications;
  ScriptLimits limits;
  std::atomic<bool> stopped = false;
  std::unique_ptr<Kept> kept;
};
