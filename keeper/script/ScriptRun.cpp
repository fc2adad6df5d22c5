#include "keeper/script/ScriptRun.h"

#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptDescriptions.h"

namespace {

/// Of the usual 8 MiB; the rest is for the application's objects.
constexpr qsizetype kStackBytes = 5 * 1024 * 1024;

ScriptValue *find(std::vector<std::pair<QString, ScriptValue>> &variables, const QString &name) {
  for (auto &[key, value] : variables) {
    // Most names share their letters with the tree, as do all that one text writes alike.
    if (key.constData() == name.constData() || key == name) return &value;
  }
  return nullptr;
}

const char *stackPlace() {
  return static_cast<const char *>(__builtin_frame_address(0));
}

}  // namespace

ScriptValue *ScriptFrame::local(const QString &name) {
  return find(locals, name);
}

ScriptRun::ScriptRun(const std::vector<ScriptApplication *> &applications_, const ScriptLimits &limits_,
                     const std::atomic<bool> &stopped_, ScriptLibraries &libraries_)
    : applications(applications_),
      limits(limits_),
      stopped(stopped_),
      libraries(libraries_),
      heap(limits_.memory),
      commandSeconds(limits_.commandSeconds),
      stackTop(stackPlace()) {}

void ScriptRun::step() {
  if (++steps > limits.steps) {
    end(scriptErrors::kTooManySteps, QStringLiteral("The script takes more steps than are allowed."));
  }
  if (stopped.load(std::memory_order_relaxed)) {
    end(scriptErrors::kUserCancelled, QStringLiteral("The script was stopped."));
  }
  if (stackTop - stackPlace() > kStackBytes) throw scriptDescriptions::tooDeep();
}

void ScriptRun::end(qint64 number, const QString &message) {
  ending = true;
  throw ScriptError{number, message, {}};
}

ScriptApplication *ScriptRun::applicationNamed(const QString &nameOrIdentifier) const {
  for (ScriptApplication *candidate : applications) {
    if (candidate->answersTo(nameOrIdentifier)) return candidate;
  }
  return nullptr;
}

ScriptValue *ScriptRun::global(const QString &name) {
  if (ScriptValue *known = find(globals, name)) return known;
  return &globals.emplace_back(name, ScriptValue()).second;
}

ScriptValue *ScriptRun::variable(const QString &name) {
  if (!frame->globals.isEmpty() && frame->globals.contains(name)) return global(name);
  if (ScriptValue *known = frame->local(name)) return known;
  for (ScriptInstance *script = frame->me.get(); script; script = script->enclosing.get()) {
    if (ScriptValue *known = script->property(name)) return known;
    if (script->declaresGlobal(name)) return global(name);
  }
  return nullptr;
}

void ScriptRun::setVariable(const QString &name, const ScriptValue &value) {
  if (ScriptValue *known = variable(name)) {
    *known = value;
  } else {
    frame->locals.emplace_back(name, value);
  }
}

void ScriptRun::setDelimiters(const ScriptValue &value) {
  QStringList texts;
  const ScriptValue list = scriptCoercions::toList(value);
  for (const ScriptValue &text : list.items()) texts.append(scriptCoercions::toText(text, rules));
  if (texts.isEmpty()) texts.append(QString());
  rules.delimiters = texts;
  delimiters = value.is(ScriptValue::Type::List) ? ScriptValue::list(list.items()) : value;
}
