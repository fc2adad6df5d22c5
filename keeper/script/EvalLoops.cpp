#include "keeper/script/EvalLoops.h"

#include "keeper/script/EvalElements.h"
#include "keeper/script/EvalExpressions.h"
#include "keeper/script/EvalProperties.h"
#include "keeper/script/EvalReferences.h"
#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptError.h"
#include "keeper/script/ScriptNumbers.h"

using evalStatements::Flow;
using scriptTree::Repeat;
using Selector = ScriptReference::Selector;
using Type = ScriptValue::Type;

namespace {

/// One round; false if the loop is to end, with how it does in `flow`.
bool goesOn(ScriptRun &run, const Repeat &loop, Flow &flow) {
  run.step();
  flow = evalStatements::execute(run, loop.body);
  return flow == Flow::On;
}

Flow afterLoop(Flow flow) {
  return flow == Flow::Exited ? Flow::On : flow;
}

Flow whileHolds(ScriptRun &run, const Repeat &loop, bool wanted) {
  Flow flow = Flow::On;
  while (evalExpressions::condition(run, *loop.first) == wanted && goesOn(run, loop, flow)) {
  }
  return afterLoop(flow);
}

Flow times(ScriptRun &run, const Repeat &loop) {
  const qint64 count = scriptCoercions::toInteger(evalExpressions::value(run, *loop.first));
  Flow flow = Flow::On;
  for (qint64 i = 0; i < count && goesOn(run, loop, flow);) ++i;
  return afterLoop(flow);
}

Flow counting(ScriptRun &run, const Repeat &loop) {
  const qint64 first = scriptCoercions::toInteger(evalExpressions::value(run, *loop.first));
  const qint64 last = scriptCoercions::toInteger(evalExpressions::value(run, *loop.last));
  const qint64 step = loop.step ? scriptCoercions::toInteger(evalExpressions::value(run, *loop.step)) : 1;
  if (step == 0)
    throw ScriptError{scriptErrors::kBadParameter, QStringLiteral("A loop can't step by 0."), {}};
  Flow flow = Flow::On;
  for (qint64 i = first; step > 0 ? i <= last : i >= last;) {
    run.setVariable(loop.variable, scriptNumbers::whole(i));
    if (!goesOn(run, loop, flow) || __builtin_add_overflow(i, step, &i)) break;
  }
  return afterLoop(flow);
}

/// The reference to an element by its position, which the variable of a walk is.
ScriptReferencePtr elementReference(const QString &className, const ScriptValue &container, qint64 position) {
  const auto made = std::make_shared<ScriptReference>();
  made->kind = ScriptReference::Kind::Element;
  made->term = className;
  made->selector = Selector::Index;
  made->key = position;
  made->container = container;
  return made;
}

/// Things of an application by their positions at the moment: what a round removes is skipped over.
Flow overThings(ScriptRun &run, const Repeat &loop, const QString &className, const ScriptValue &container) {
  Flow flow = Flow::On;
  for (qint64 i = 1; i <= evalProperties::living(container)->elementCount(className); ++i) {
    run.setVariable(loop.variable, elementReference(className, container, i));
    if (!goesOn(run, loop, flow)) break;
  }
  return afterLoop(flow);
}

Flow overItems(ScriptRun &run, const Repeat &loop, const ScriptValue &list) {
  Flow flow = Flow::On;
  for (qint64 i = 1; i <= evalElements::countItems(list); ++i) {
    run.setVariable(loop.variable, elementReference(QStringLiteral("item"), list, i));
    if (!goesOn(run, loop, flow)) break;
  }
  return afterLoop(flow);
}

Flow walk(ScriptRun &run, const Repeat &loop) {
  const ScriptValue walked = evalExpressions::unresolved(run, *loop.first);
  if (walked.is(Type::Reference)) {
    const ScriptReferencePtr set = walked.reference();
    const bool isWhole = set->kind == ScriptReference::Kind::Element && set->selector == Selector::Every &&
                         !set->filter && !evalReferences::isMany(set->container);
    const ScriptValue container = isWhole ? evalReferences::settled(run, set->container) : ScriptValue();
    if (container.is(Type::Object)) return overThings(run, loop, set->term, container);
  }
  const ScriptValue settled = evalReferences::settled(run, walked);
  if (!settled.is(Type::Text)) return overItems(run, loop, scriptCoercions::toList(settled));
  ScriptReference characters;
  characters.kind = ScriptReference::Kind::Element;
  characters.term = QStringLiteral("character");
  return overItems(run, loop, evalElements::get(run, settled, characters));
}

}  // namespace

Flow evalLoops::repeat(ScriptRun &run, const Repeat &statement) {
  switch (statement.kind) {
    case Repeat::Kind::Times:
      return times(run, statement);
    case Repeat::Kind::While:
      return whileHolds(run, statement, true);
    case Repeat::Kind::Until:
      return whileHolds(run, statement, false);
    case Repeat::Kind::With:
      return counting(run, statement);
    case Repeat::Kind::In:
      return walk(run, statement);
    case Repeat::Kind::Forever:
      break;
  }
  Flow flow = Flow::On;
  while (goesOn(run, statement, flow)) {
  }
  return afterLoop(flow);
}
