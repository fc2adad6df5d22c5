#include "keeper/script/EvalHandlers.h"

#include "keeper/script/EvalExpressions.h"
#include "keeper/script/EvalReferences.h"
#include "keeper/script/EvalStatements.h"
#include "keeper/script/ScriptDescriptions.h"

using namespace scriptTree;
using Type = ScriptValue::Type;

namespace {

ScriptError notUnderstood(const ScriptValue &target, const QString &name) {
  return {scriptErrors::kNotUnderstood,
          QStringLiteral("%1 doesn't understand the \"%2\" message.")
              .arg(scriptDescriptions::describe(target), name),
          {}};
}

/// A handler's activation: its frame in place of the caller's, with the script as `it`, and one level deeper.
class Activation {
 public:
  Activation(ScriptRun &run_, ScriptFrame &frame)
      : run(run_), callersFrame(run_.frame), it(run_.it), application(run_.application) {
    run.frame = &frame;
    run.it = frame.me;
    run.application = nullptr;
    ++run.depth;
  }
  ~Activation() {
    --run.depth;
    run.frame = callersFrame;
  }
  Activation(const Activation &) = delete;
  Activation &operator=(const Activation &) = delete;

 private:
  ScriptRun &run;
  ScriptFrame *callersFrame;
  ScriptRestore<ScriptValue> it;
  ScriptRestore<ScriptApplication *> application;
};

ScriptValue executeIn(ScriptRun &run, ScriptFrame &frame, const Block &body) {
  if (run.depth >= run.limits.depth) throw scriptDescriptions::tooDeep();
  const Activation activation(run, frame);
  try {
    const bool returned = evalStatements::execute(run, body) == evalStatements::Flow::Returned;
    return returned ? frame.returned : frame.result;
  } catch (ScriptError &error) {
    // Nobody outside knows the text of a loaded script.
    if (frame.me->source.get() != run.main) error.range = {};
    throw;
  }
}

ScriptFrame frameOf(const ScriptInstancePtr &script, const Handler &handler, ScriptListItems &&arguments) {
  ScriptFrame frame;
  frame.me = script;
  for (qsizetype i = 0; i < handler.parameters.size(); ++i) {
    const bool given = size_t(i) < arguments.size();
    frame.locals.emplace_back(handler.parameters.at(i),
                              given ? std::move(arguments[size_t(i)]) : ScriptValue());
  }
  return frame;
}

ScriptValue invoke(ScriptRun &run, const ScriptInstancePtr &script, const Handler &handler,
                   ScriptListItems &&arguments) {
  if (qsizetype(arguments.size()) != handler.parameters.size()) {
    throw ScriptError{scriptErrors::kParameterMissing,
                      QStringLiteral("%1 takes %2 parameters, not %3.")
                          .arg(handler.name)
                          .arg(handler.parameters.size())
                          .arg(arguments.size()),
                      {}};
  }
  ScriptFrame frame = frameOf(script, handler, std::move(arguments));
  return executeIn(run, frame, handler.body);
}

}  // namespace

ScriptValue evalHandlers::callNamed(ScriptRun &run, const ScriptInstancePtr &script, const QString &name,
                                    ScriptListItems arguments) {
  for (ScriptInstancePtr holder = script; holder; holder = holder->enclosing) {
    if (const Handler *handler = holder->handler(name)) {
      return invoke(run, holder, *handler, std::move(arguments));
    }
  }
  throw notUnderstood(script, name);
}

ScriptValue evalHandlers::call(ScriptRun &run, const HandlerCall &call) {
  const ScriptValue target = call.target ? evalExpressions::value(run, *call.target) : run.it;
  ScriptListItems arguments;
  for (const ExpressionPtr &argument : call.arguments) {
    arguments.push_back(evalExpressions::evaluate(run, *argument));
    if (!arguments.back().is(Type::NoValue)) continue;
    throw ScriptError{scriptErrors::kNoResult,
                      QStringLiteral("No result was returned from some part of this expression."),
                      argument->range};
  }
  const ScriptValue settled = evalReferences::settled(run, target);
  if (!settled.is(Type::Instance)) throw notUnderstood(settled, call.name);
  return callNamed(run, settled.instance(), call.name, std::move(arguments));
}

ScriptValue evalHandlers::run(ScriptRun &run, const ScriptInstancePtr &script, ScriptListItems arguments) {
  if (const Handler *handler = script->handler(QStringLiteral("run"))) {
    if (handler->takesList) arguments = {run.heap.made(ScriptValue::list(std::move(arguments)))};
    ScriptFrame frame = frameOf(script, *handler, std::move(arguments));
    return executeIn(run, frame, handler->body);
  }
  ScriptFrame frame;
  frame.me = script;
  return executeIn(run, frame, script->script.statements);
}

ScriptInstancePtr evalHandlers::load(ScriptRun &run, const QString &name, const ParsedScriptPtr &source,
                                     const Script &script, const ScriptInstancePtr &enclosing) {
  const auto made = std::make_shared<ScriptInstance>(name, source, script, enclosing);
  run.heap.made(made);
  ScriptFrame frame;
  frame.me = made;
  if (run.depth >= run.limits.depth) throw scriptDescriptions::tooDeep();
  const Activation activation(run, frame);
  try {
    for (const auto &[property, value] : script.properties) {
      made->setProperty(property, evalExpressions::evaluate(run, *value));
    }
    for (const DefineScript &inner : script.scripts) {
      made->setProperty(inner.name, load(run, inner.name, source, *inner.script, made));
    }
  } catch (ScriptError &error) {
    if (source.get() != run.main) error.range = {};
    throw;
  }
  return made;
}
