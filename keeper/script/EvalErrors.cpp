#include "keeper/script/EvalErrors.h"

#include "keeper/script/EvalExpressions.h"
#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptComparisons.h"

using namespace scriptTree;
using evalStatements::Flow;
using Type = ScriptValue::Type;

namespace {

/// What an `error` statement gives along.
struct RaisedError : ScriptError {
  ScriptValue from;
  ScriptValue partialResult;
  ScriptValue to;
};

ScriptValue given(ScriptRun &run, const ExpressionPtr &expression) {
  return expression ? evalExpressions::value(run, *expression) : ScriptValue();
}

/// True if a part of `on error` leaves the value open or demands just it.
bool fits(const ExpressionPtr &part, const ScriptValue &value) {
  const auto *demanded = part ? std::get_if<Literal>(&part->form) : nullptr;
  return !demanded || scriptComparisons::areEqual(demanded->value, value, ScriptTextRules());
}

void fill(ScriptRun &run, const ExpressionPtr &part, const ScriptValue &value) {
  const auto *variable = part ? std::get_if<Variable>(&part->form) : nullptr;
  if (variable) run.setVariable(variable->name, value);
}

/// Fills the variables of `on error`; false if it does not want this error.
bool take(ScriptRun &run, const ErrorParts &parts, const ScriptError &error, const RaisedError *raised) {
  const std::pair<const ExpressionPtr *, ScriptValue> pairs[] = {
      {&parts.message, error.message},
      {&parts.number, error.number},
      {&parts.from, raised ? raised->from : ScriptValue()},
      {&parts.partialResult, raised ? raised->partialResult : ScriptValue()},
      {&parts.to, raised ? raised->to : ScriptValue()}};
  for (const auto &[part, value] : pairs) {
    if (!fits(*part, value)) return false;
  }
  for (const auto &[part, value] : pairs) fill(run, *part, value);
  return true;
}

}  // namespace

void evalErrors::raise(ScriptRun &run, const Raise &statement) {
  RaisedError error;
  const ScriptValue message = given(run, statement.parts.message);
  if (!message.is(Type::NoValue)) error.message = scriptCoercions::toText(message, run.rules);
  const ScriptValue number = given(run, statement.parts.number);
  if (!number.is(Type::NoValue)) error.number = scriptCoercions::toInteger(number);
  error.from = given(run, statement.parts.from);
  error.partialResult = given(run, statement.parts.partialResult);
  error.to = given(run, statement.parts.to);
  throw error;
}

Flow evalErrors::attempt(ScriptRun &run, const Try &statement) {
  const auto isWanted = [&](const ScriptError &error, const RaisedError *raised) {
    return !run.ending && (!statement.hasHandler || take(run, statement.caught, error, raised));
  };
  try {
    return evalStatements::execute(run, statement.body);
  } catch (const RaisedError &error) {
    if (!isWanted(error, &error)) throw;
  } catch (const ScriptError &error) {
    if (!isWanted(error, nullptr)) throw;
  }
  return statement.hasHandler ? evalStatements::execute(run, statement.handler) : Flow::On;
}
