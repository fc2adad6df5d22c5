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

/// The property by which a name or an id picks.
QString keyProperty(Selector selector) {
  return selector == Selector::Id ? QStringLiteral("id") : QStringLiteral("name");
}

/// The first whose property is the key; null if there is none.
ScriptObjectPtr firstWith(ScriptRun &run, const ScriptObjects &things, const QString &property,
                          const ScriptValue &key) {
  for (const ScriptObjectPtr &thing : things) {
    run.step();
    if (scriptComparisons::areEqual(thing->property(property), key, ScriptTextRules())) return thing;
  }
  return nullptr;
}

ScriptObjectPtr firstWith(ScriptRun &run, ScriptObject &container, const ScriptReference &element,
                          const QString &property) {
  const auto known = container.elementsWhere(element.term, property, element.key);
  if (known) return known->empty() ? nullptr : known->front();
  return firstWith(run, container.elements(element.term), property, element.key);
}

/// The selector by which a key picks.
Selector selectorOf(const ScriptReference &element) {
  if (element.selector != Selector::Key) return element.selector;
  return element.key.is(Type::Text) ? Selector::Name : Selector::Index;
}

ScriptValue rangeOf(ScriptRun &run, const ScriptObjects &things, const ScriptReference &element) {
  const ScriptValue list = listOf(run, things);
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
  const Selector selector = selectorOf(element);
  if (selector == Selector::Every) return listOf(run, found);
  if (selector == Selector::Range) return rangeOf(run, found, element);
  if (selector != Selector::Name && selector != Selector::Id) return pickedOf(found, element, container);
  const ScriptObjectPtr named = firstWith(run, found, keyProperty(selector), element.key);
  if (!named) throw absent(element, container);
  return named;
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
      return rangeOf(run, holder.elements(element.term), element);
    case Selector::Name:
    case Selector::Id: {
      const ScriptObjectPtr found = firstWith(run, holder, element, keyProperty(selector));
      if (!found) throw absent(element, container);
      return found;
    }
    default:
      break;
  }
  const auto at = evalElements::position(element, holder.elementCount(element.term));
  const ScriptObjectPtr thing = at ? holder.elementAt(element.term, *at) : nullptr;
  if (!thing) throw absent(element, container);
  return thing;
}
