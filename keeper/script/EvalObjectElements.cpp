#include "keeper/script/EvalObjectElements.h"

#include "keeper/script/EvalElements.h"
#include "keeper/script/EvalFilter.h"
#include "keeper/script/EvalProperties.h"
#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptComparisons.h"
#include "keeper/script/ScriptDescriptions.h"

using Selector = ScriptReference::Selector;
using Type = ScriptValue::Type;

namespace {

ScriptValue listOf(ScriptRun &run, const ScriptObjects &things) {
  return run.heap.made(ScriptValue::list(ScriptListItems(things.begin(), things.end())));
}

ScriptError absent(const ScriptReference &element, const ScriptValue &container) {
  const bool isNamed = !element.key.is(Type::NoValue);
  const QString key = isNamed ? u' ' + scriptDescriptions::describe(element.key) : QString();
  return scriptDescriptions::cannotGet(element.term + key, container);
}

/// Those whose name or id is the key.
ScriptObjects withProperty(ScriptRun &run, ScriptObject &container, const ScriptReference &element,
                           const QString &property) {
  if (auto found = container.elementsWhere(element.term, property, element.key)) return std::move(*found);
  ScriptObjects found;
  for (const ScriptObjectPtr &thing : container.elements(element.term)) {
    run.step();
    if (!scriptComparisons::areEqual(thing->property(property), element.key, ScriptTextRules())) continue;
    found.push_back(thing);
    break;
  }
  return found;
}

/// The selector by which a key picks.
Selector selectorOf(const ScriptReference &element) {
  if (element.selector != Selector::Key) return element.selector;
  return element.key.is(Type::Text) ? Selector::Name : Selector::Index;
}

ScriptValue rangeOf(ScriptRun &run, ScriptObject &container, const ScriptReference &element) {
  const ScriptValue list = listOf(run, container.elements(element.term));
  return evalElements::get(run, list, [&] {
    ScriptReference range = element;
    range.term = QStringLiteral("item");
    range.filter = nullptr;
    return range;
  }());
}

ScriptValue pickedOf(const ScriptObjects &things, const ScriptReference &element,
                     const ScriptValue &container) {
  if (const auto at = evalElements::position(element, qsizetype(things.size()))) return things[size_t(*at)];
  throw absent(element, container);
}

ScriptValue filtered(ScriptRun &run, const ScriptValue &container, const ScriptReference &element) {
  const ScriptObjects found = element.filter->apply(run, *evalProperties::living(container), element.term);
  if (element.selector == Selector::Every) return listOf(run, found);
  return pickedOf(found, element, container);
}

}  // namespace

ScriptValue evalObjectElements::get(ScriptRun &run, const ScriptValue &container,
                                    const ScriptReference &element) {
  if (element.filter) return filtered(run, container, element);
  ScriptObject &holder = *evalProperties::living(container);
  const Selector selector = selectorOf(element);
  switch (selector) {
    case Selector::Every:
      return listOf(run, holder.elements(element.term));
    case Selector::Range:
      return rangeOf(run, holder, element);
    case Selector::Name:
    case Selector::Id: {
      const QString property = selector == Selector::Id ? QStringLiteral("id") : QStringLiteral("name");
      const ScriptObjects found = withProperty(run, holder, element, property);
      if (found.empty()) throw absent(element, container);
      return found.front();
    }
    default:
      break;
  }
  const auto at = evalElements::position(element, holder.elementCount(element.term));
  const ScriptObjectPtr thing = at ? holder.elementAt(element.term, *at) : nullptr;
  if (!thing) throw absent(element, container);
  return thing;
}
