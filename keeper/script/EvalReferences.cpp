#include "keeper/script/EvalReferences.h"

#include <QFileInfo>

#include "keeper/script/EvalElements.h"
#include "keeper/script/EvalExpressions.h"
#include "keeper/script/EvalFilter.h"
#include "keeper/script/EvalProperties.h"
#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptDescriptions.h"

using namespace scriptTree;
using Kind = ScriptReference::Kind;
using Type = ScriptValue::Type;

namespace {

bool isWay(const Expression &expression) {
  return std::holds_alternative<Property>(expression.form) ||
         std::holds_alternative<Element>(expression.form);
}

/// True for what leads to a set, whatever it is a set of.
bool isSet(const Expression &expression) {
  if (const auto *property = std::get_if<Property>(&expression.form)) {
    return property->container && isSet(*property->container);
  }
  const auto *element = std::get_if<Element>(&expression.form);
  if (!element) return false;
  const bool isMany =
      element->selector == Element::Selector::Every || element->selector == Element::Selector::Range;
  return isMany || (element->container && isSet(*element->container));
}

ScriptValue containerOf(ScriptRun &run, const ExpressionPtr &container, bool lazily) {
  if (!container) return run.it;
  if (isWay(*container) && (lazily || isSet(*container))) return evalExpressions::unresolved(run, *container);
  return evalExpressions::evaluate(run, *container);
}

void specifyElement(ScriptRun &run, const Element &element, bool lazily, ScriptReference &made) {
  made.kind = Kind::Element;
  made.term = element.className;
  made.selector = element.selector;
  made.ordinal = element.ordinal;
  made.container = containerOf(run, element.container, lazily);
  if (element.key) made.key = evalExpressions::value(run, *element.key);
  if (element.upTo) made.upTo = evalExpressions::value(run, *element.upTo);
  if (element.test) made.filter = EvalFilter::make(run, *element.test);
}

/// A property of each of many things.
ScriptValue mapped(ScriptRun &run, const ScriptListItems &things, const QString &term) {
  ScriptListItems values;
  values.reserve(things.size());
  for (const ScriptValue &thing : things) {
    run.step();
    values.push_back(evalProperties::get(run, thing, term));
  }
  return run.heap.made(ScriptValue::list(std::move(values)));
}

/// The short way to a column: all things of a class in one container, without a test.
std::optional<ScriptListItems> directColumn(ScriptRun &run, const ScriptReference &set, const QString &term) {
  if (set.kind != Kind::Element || set.selector != Element::Selector::Every || set.filter)
    return std::nullopt;
  if (evalReferences::isMany(set.container) || term == u"class") return std::nullopt;
  const ScriptValue container = evalReferences::settled(run, set.container);
  if (!container.is(Type::Object)) return std::nullopt;
  return evalProperties::living(container)->column(set.term, term);
}

/// True for what a set led to if it is things of an application, rather than parts of a text or list.
bool areThings(ScriptRun &run, const ScriptReference &set, const ScriptValue &found) {
  if (!found.is(Type::List)) return false;
  if (!found.items().empty()) return found.items().front().is(Type::Object);
  return evalReferences::isMany(set.container) ||
         evalReferences::settled(run, set.container).is(Type::Object);
}

ScriptValue columnOf(ScriptRun &run, const ScriptReference &property) {
  const ScriptReferencePtr set = property.container.reference();
  ScriptValue values;
  if (auto column = directColumn(run, *set, property.term)) {
    values = run.heap.made(ScriptValue::list(std::move(*column)));
  } else {
    const ScriptValue things = evalReferences::resolve(run, *set);
    if (!areThings(run, *set, things)) return evalProperties::get(run, things, property.term);
    values = mapped(run, things.items(), property.term);
  }
  if (values.items().empty())
    throw scriptDescriptions::cannotGet(QStringLiteral("%1 of every %2").arg(property.term, set->term));
  return values;
}

ScriptValue elementsOfMany(ScriptRun &run, const ScriptReference &reference) {
  const ScriptReferencePtr set = reference.container.reference();
  const ScriptValue containers = evalReferences::resolve(run, *set);
  if (!areThings(run, *set, containers)) return evalElements::get(run, containers, reference);
  ScriptListItems found;
  for (const ScriptValue &container : containers.items()) {
    run.step();
    found.push_back(evalElements::get(run, container, reference));
  }
  return run.heap.made(ScriptValue::list(std::move(found)));
}

const ScriptReference *referenceIn(const ScriptValue &value) {
  return value.is(Type::Reference) ? value.reference().get() : nullptr;
}

}  // namespace

ScriptValue evalReferences::language() {
  return ScriptConstant{QStringLiteral("AppleScript")};
}

ScriptReference evalReferences::specify(ScriptRun &run, const Expression &expression, bool lazily) {
  ScriptReference made;
  if (const auto *element = std::get_if<Element>(&expression.form)) {
    specifyElement(run, *element, lazily, made);
  } else if (const auto *property = std::get_if<Property>(&expression.form)) {
    made.kind = Kind::Property;
    made.term = property->term;
    made.container = containerOf(run, property->container, lazily);
  } else {
    const auto &insertion = std::get<Insertion>(expression.form);
    made.kind = Kind::Insertion;
    made.place = insertion.place;
    made.container = containerOf(run, insertion.anchor, lazily);
  }
  if (const ScriptReference *behind = referenceIn(made.container)) made.depth = behind->depth + 1;
  if (made.depth > scriptCoercions::kDeepest) throw scriptDescriptions::tooDeep();
  return made;
}

ScriptValue evalReferences::get(ScriptRun &run, const Expression &expression) {
  const auto *property = std::get_if<Property>(&expression.form);
  if (property && property->term == u"running" && property->container) {
    if (const auto *application = std::get_if<Application>(&property->container->form)) {
      const ScriptApplication *named = run.applicationNamed(evalExpressions::text(run, *application->name));
      return named && named->exists();
    }
  }
  return resolve(run, specify(run, expression, false));
}

bool evalReferences::isMany(const ScriptValue &value) {
  for (const ScriptReference *at = referenceIn(value); at; at = referenceIn(at->container)) {
    if (at->isSet()) return true;
    if (at->kind == Kind::Insertion) return false;
  }
  return false;
}

ScriptValue evalReferences::resolve(ScriptRun &run, const ScriptReference &reference) {
  run.step();
  const bool many = isMany(reference.container);
  switch (reference.kind) {
    case Kind::Insertion:
      return settled(run, reference.container);
    case Kind::Element:
      if (many) return elementsOfMany(run, reference);
      return evalElements::get(run, settled(run, reference.container), reference);
    case Kind::Property:
      if (reference.term == u"contents") return settled(run, reference.container);
      if (many) return columnOf(run, reference);
      return evalProperties::get(run, settled(run, reference.container), reference.term);
  }
  return {};
}

ScriptValue evalReferences::settled(ScriptRun &run, ScriptValue value) {
  while (value.is(Type::Reference)) {
    const ScriptReferencePtr reference = value.reference();
    value = resolve(run, *reference);
  }
  return value;
}

qint64 evalReferences::count(ScriptRun &run, const ScriptValue &counted, const QString &each) {
  const ScriptReference *reference = referenceIn(counted);
  const bool isElement = reference && reference->kind == Kind::Element;
  if (isElement && isMany(reference->container)) {
    const ScriptReferencePtr set = reference->container.reference();
    // As music applications do: elements of many things are not counted one by one.
    if (areThings(run, *set, resolve(run, *set))) return 0;
  }
  if (!each.isEmpty()) return evalElements::countEach(run, settled(run, counted), each);
  const bool isWhole = isElement && !reference->filter && reference->selector == Element::Selector::Every;
  if (isWhole && !isMany(reference->container)) {
    const ScriptValue container = settled(run, reference->container);
    if (container.is(Type::Object)) return evalProperties::living(container)->elementCount(reference->term);
  }
  return evalElements::countItems(settled(run, counted));
}

bool evalReferences::exists(ScriptRun &run, const Expression &expression) {
  try {
    const ScriptValue found = settled(run, evalExpressions::unresolved(run, expression));
    if (found.is(Type::Object)) return found.object()->exists();
    if (found.is(Type::File)) return QFileInfo::exists(found.file().path);
    if (found.is(Type::List) && isWay(expression)) return !found.items().empty();
    return !found.is(Type::NoValue) && !found.is(Type::Missing);
  } catch (const ScriptError &error) {
    const bool isAbsent =
        error.number == scriptErrors::kCannotGet || error.number == scriptErrors::kInvalidIndex;
    if (run.ending || !isAbsent) throw;
    return false;
  }
}

ScriptApplication *evalReferences::applicationOf(const ScriptValue &value) {
  const ScriptValue *root = &value;
  while (root->is(Type::Reference)) root = &root->reference()->container;
  return root->is(Type::Object) ? dynamic_cast<ScriptApplication *>(root->object().get()) : nullptr;
}
