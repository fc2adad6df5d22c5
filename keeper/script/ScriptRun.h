#pragma once

#include <atomic>
#include <functional>

#include "keeper/script/Interpreter.h"
#include "keeper/script/ScriptHeap.h"
#include "keeper/script/ScriptTextRules.h"

class ScriptLibraries;

/// One handler at work: its variables, and what it has to give.
struct ScriptFrame {
  ScriptInstancePtr me;
  std::vector<std::pair<QString, ScriptValue>> locals;
  /// Named by `global` in this handler.
  QStringList globals;
  /// What the last statement gave.
  ScriptValue result;
  /// What `return` gave.
  ScriptValue returned;

  ScriptValue *local(const QString &name);
};

/// Everything that a script at work knows. One for each run; one thread.
struct ScriptRun {
  ScriptRun(const std::vector<ScriptApplication *> &applications, const ScriptLimits &limits,
            const std::atomic<bool> &stopped, ScriptLibraries &libraries);

  const std::vector<ScriptApplication *> &applications;
  const ScriptLimits &limits;
  const std::atomic<bool> &stopped;
  ScriptLibraries &libraries;

  /// Before all values, as it takes apart at last what they held.
  ScriptHeap heap;
  /// The text whose ranges the caller of the run understands.
  const ParsedScript *main = nullptr;
  /// Texts that are run or loaded: their trees live as long as the run.
  std::vector<ParsedScriptPtr> sources;
  std::vector<std::pair<QString, ScriptValue>> globals;

  ScriptFrame *frame = nullptr;
  /// The target of the innermost `tell`.
  ScriptValue it;
  /// The application told last, for things whose way does not name one.
  ScriptApplication *application = nullptr;
  ScriptTextRules rules;
  /// As they were set: a text or a list of texts.
  ScriptValue delimiters = QString();
  double commandSeconds = 0.0;
  int depth = 0;
  /// Set once nothing may catch the error that is on its way.
  bool ending = false;

  /// Counts a step: -2707 beyond their number, -128 if the script is to stop, -2706 if the stack runs out.
  void step();
  /// The application of that name or identifier; null if there is none.
  ScriptApplication *applicationNamed(const QString &nameOrIdentifier) const;
  /// The parent of a variable's value: a local, a global, or a property of the script and those around it;
  /// null if there is no such variable.
  ScriptValue *variable(const QString &name);
  /// Sets a variable; one that is unknown becomes a local.
  void setVariable(const QString &name, const ScriptValue &value);
  void setDelimiters(const ScriptValue &value);

 private:
  [[noreturn]] void end(qint64 number, const QString &message);
  ScriptValue *global(const QString &name);

  qint64 steps = 0;
  const char *stackTop;
};

/// Puts a member of the run back as it was at the end of a scope.
template <typename T>
class ScriptRestore {
 public:
  explicit ScriptRestore(T &place_) : place(place_), before(place_) {}
  ~ScriptRestore() { place = std::move(before); }
  ScriptRestore(const ScriptRestore &) = delete;
  ScriptRestore &operator=(const ScriptRestore &) = delete;

 private:
  T &place;
  T before;
};
