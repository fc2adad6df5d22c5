#include "keeper/script/EvalBuiltins.h"

#include <algorithm>
#include <cmath>

#include "keeper/script/EvalExpressions.h"
#include "keeper/script/EvalHandlers.h"
#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptDates.h"
#include "keeper/script/ScriptDescriptions.h"
#include "keeper/script/ScriptLibraries.h"
#include "keeper/script/ScriptNumbers.h"
#include "keeper/script/ScriptTextElements.h"
#include "platform/Platform.h"

using scriptTree::Builtin;
using Type = ScriptValue::Type;

namespace {

/// How long a rest lasts before the script looks whether it is to stop.
constexpr double kNapSeconds = 0.25;

void delay(ScriptRun &run, double seconds) {
  double left = std::isfinite(seconds) ? seconds : 0.0;
  for (; left > 0.0; left -= kNapSeconds) {
    run.step();
    platform().clock->sleep(std::min(left, kNapSeconds));
  }
}

ScriptValue rounded(double number, const QString &how) {
  double made = std::nearbyint(number);
  if (how == u"up") made = std::ceil(number);
  if (how == u"down") made = std::floor(number);
  if (how == u"toward zero") made = std::trunc(number);
  if (how == u"as taught in school") made = std::round(number);
  return scriptNumbers::wholeIfItFits(made);
}

ScriptValue textOfPoints(const ScriptValue &value) {
  const ScriptValue list = scriptCoercions::toList(value);
  QString text;
  for (const ScriptValue &item : list.items()) {
    const qint64 point = scriptCoercions::toInteger(item);
    if (point < 0 || point > QChar::LastValidCodePoint)
      throw scriptDescriptions::cannotMake(item, QStringLiteral("text"));
    if (QChar::requiresSurrogates(char32_t(point))) {
      text.append(QChar(QChar::highSurrogate(char32_t(point))));
      text.append(QChar(QChar::lowSurrogate(char32_t(point))));
    } else {
      text.append(QChar(char16_t(point)));
    }
  }
  if (text.size() > scriptCoercions::kLongestText) throw scriptDescriptions::tooLarge();
  return text;
}

ScriptValue loadScript(ScriptRun &run, const ScriptValue &file) {
  const ParsedScriptPtr parsed = run.libraries.load(scriptCoercions::toFile(file).path);
  run.sources.push_back(parsed);
  return evalHandlers::load(run, QString(), parsed, parsed->script, nullptr);
}

ScriptValue runScript(ScriptRun &run, const ScriptValue &script) {
  if (script.is(Type::Instance)) return evalHandlers::run(run, script.instance(), {});
  if (!script.is(Type::Text)) return evalHandlers::run(run, loadScript(run, script).instance(), {});
  ParsedScriptPtr parsed;
  try {
    parsed = ScriptParser::parse(script.text(), run.libraries.dictionaries);
  } catch (ScriptError &error) {
    error.range = {};
    throw;
  }
  run.sources.push_back(parsed);
  return evalHandlers::run(run, evalHandlers::load(run, QString(), parsed, parsed->script, nullptr), {});
}

ScriptFile posixFile(const QString &path) {
  if (path.isEmpty()) throw scriptDescriptions::cannotMake(path, QStringLiteral("file"));
  return {path, false};
}

}  // namespace

ScriptValue evalBuiltins::call(ScriptRun &run, const Builtin &builtin) {
  ScriptListItems arguments;
  for (const auto &argument : builtin.arguments) arguments.push_back(evalExpressions::value(run, *argument));
  const auto argument = [&](size_t index) {
    return index < arguments.size() ? arguments[index] : ScriptValue();
  };
  switch (builtin.function) {
    case Builtin::Function::CurrentDate:
      return Date{std::floor(platform().clock->now().seconds)};
    case Builtin::Function::Delay:
      delay(run, arguments.empty() ? 1.0 : scriptCoercions::toReal(argument(0)));
      return {};
    case Builtin::Function::Offset:
      return scriptText::offset(scriptCoercions::toText(argument(0), run.rules),
                                scriptCoercions::toText(argument(1), run.rules), run.rules);
    case Builtin::Function::PosixFile:
      return posixFile(scriptCoercions::toText(argument(0), run.rules));
    case Builtin::Function::File:
      return scriptCoercions::toFile(argument(0));
    case Builtin::Function::Alias:
      return scriptCoercions::coerce(argument(0), QStringLiteral("alias"), run.rules);
    case Builtin::Function::Round:
      return rounded(scriptCoercions::toReal(argument(0)),
                     argument(1).is(Type::Text) ? argument(1).text() : QString());
    case Builtin::Function::LoadScript:
      return loadScript(run, argument(0));
    case Builtin::Function::RunScript:
      return runScript(run, argument(0));
    case Builtin::Function::TimeToGmt:
      return scriptDates::secondsToGreenwich(platform().clock->now());
    case Builtin::Function::CharacterId:
    case Builtin::Function::StringId:
      return run.heap.made(textOfPoints(argument(0)));
    case Builtin::Function::Log:
      return {};
  }
  return {};
}
