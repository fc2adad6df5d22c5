#include "keeper/script/EvalCommands.h"

#include <algorithm>

#include "keeper/script/EvalExpressions.h"
#include "keeper/script/EvalHandlers.h"
#include "keeper/script/EvalProperties.h"
#include "keeper/script/EvalReferences.h"
#include "keeper/script/ScriptDescriptions.h"
#include "platform/Platform.h"

using scriptTree::Command;
using Type = ScriptValue::Type;

namespace {

/// References, also in a list or record, followed: applications are sent values and things.
ScriptValue resolved(ScriptRun &run, const ScriptValue &given) {
  const ScriptValue value = evalReferences::settled(run, given);
  const auto isReference = [](const ScriptValue &item) { return item.is(Type::Reference); };
  if (value.is(Type::List) && std::any_of(value.items().begin(), value.items().end(), isReference)) {
    ScriptListItems items = value.items();
    for (ScriptValue &item : items) item = evalReferences::settled(run, item);
    return run.heap.made(ScriptValue::list(std::move(items)));
  }
  if (value.is(Type::Record)) {
    ScriptRecordFields fields = value.fields();
    for (auto &field : fields) field.second = evalReferences::settled(run, field.second);
    return run.heap.made(ScriptValue::record(std::move(fields)));
  }
  return value;
}

ScriptError notUnderstood(const ScriptValue &target, const QString &verb) {
  return {scriptErrors::kNotUnderstood,
          QStringLiteral("%1 doesn't understand the \"%2\" message.")
              .arg(scriptDescriptions::describe(target), verb),
          {}};
}

/// The application that is to obey.
ScriptApplication *receiver(ScriptRun &run, const ScriptValue &direct) {
  if (ScriptApplication *named = evalReferences::applicationOf(direct)) return named;
  if (ScriptApplication *told = evalReferences::applicationOf(run.it)) return told;
  const bool inApplication = run.it.is(Type::Object) || run.it.is(Type::Reference);
  return inApplication ? run.application : nullptr;
}

ScriptValue perform(ScriptRun &run, ScriptApplication &application, const ScriptCommand &command) {
  const bool starts = command.verb == u"launch" || command.verb == u"activate" || command.verb == u"run";
  if (!application.exists() && !starts) {
    throw ScriptError{scriptErrors::kApplicationNotRunning, QStringLiteral("Application isn't running."), {}};
  }
  const double begin = platform().clock->now().seconds;
  ScriptValue reply = application.perform(command);
  if (platform().clock->now().seconds - begin > run.commandSeconds) {
    throw ScriptError{scriptErrors::kTimedOut, QStringLiteral("The event timed out."), {}};
  }
  return reply;
}

}  // namespace

ScriptValue evalCommands::send(ScriptRun &run, const Command &command) {
  ScriptCommand sent;
  sent.verb = command.verb;
  ScriptValue direct;
  if (command.direct) direct = evalExpressions::evaluate(run, *command.direct);
  ScriptApplication *application = receiver(run, direct);
  sent.direct = resolved(run, direct);
  if (sent.direct.is(Type::Instance) && command.verb == u"run") {
    return evalHandlers::run(run, sent.direct.instance(), {});
  }
  if (!application) {
    const ScriptValue target = evalReferences::settled(run, run.it);
    if (!target.is(Type::Instance)) throw notUnderstood(target, command.verb);
    ScriptListItems arguments;
    if (command.direct) arguments.push_back(sent.direct);
    return evalHandlers::callNamed(run, target.instance(), command.verb, std::move(arguments));
  }
  if (sent.direct.is(Type::NoValue)) {
    const ScriptValue target = evalReferences::settled(run, run.it);
    if (target.is(Type::Object)) sent.target = target.object();
  }
  for (const auto &[label, parameter] : command.parameters) {
    sent.parameters.emplace_back(label, resolved(run, evalExpressions::evaluate(run, *parameter)));
  }
  return perform(run, *application, sent);
}
