#include "keeper/script/EvalAssignments.h"

#include "keeper/script/EvalElements.h"
#include "keeper/script/EvalExpressions.h"
#include "keeper/script/EvalProperties.h"
#include "keeper/script/EvalReferences.h"
#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptDates.h"
#include "keeper/script/ScriptDescriptions.h"

using namespace scriptTree;
using Kind = ScriptReference::Kind;
using Type = ScriptValue::Type;

namespace {

ScriptError cannotSet(const QString &what) {
  return {scriptErrors::kCannotSet, QStringLiteral("Can't set %1.").arg(what), {}};
}

void setItem(ScriptRun &run, const ScriptReference &element, const ScriptValue &value) {
  const ScriptValue container = evalReferences::settled(run, element.container);
  const bool isItem = container.is(Type::List) && element.term == u"item" && !element.isSet();
  if (!isItem)
    throw cannotSet(element.term + QStringLiteral(" of ") + scriptDescriptions::describe(container));
  const auto at = evalElements::position(element, qsizetype(container.items().size()));
  if (!at) throw scriptDescriptions::cannotGet(QStringLiteral("item"), container);
  const ScriptValue before = std::move(container.items()[size_t(*at)]);
  container.items()[size_t(*at)] = value;
}

/// `set end of L to V`.
void insert(ScriptRun &run, const ScriptReference &insertion, const ScriptValue &value) {
  const ScriptValue list = evalReferences::settled(run, insertion.container);
  const bool atEnd = insertion.place == Insertion::Place::End;
  if (!list.is(Type::List) || (!atEnd && insertion.place != Insertion::Place::Beginning)) {
    throw cannotSet(QStringLiteral("a place in ") + scriptDescriptions::describe(list));
  }
  run.heap.grew();
  list.items().insert(atEnd ? list.items().end() : list.items().begin(), value);
}

void setField(const ScriptValue &record, const QString &name, const ScriptValue &value) {
  for (auto &[key, field] : record.fields()) {
    if (key != name) continue;
    field = value;
    return;
  }
  throw scriptDescriptions::cannotGet(name, record);
}

bool setInstanceProperty(ScriptInstance &instance, const QString &name, const ScriptValue &value) {
  for (ScriptInstance *script = &instance; script; script = script->enclosing.get()) {
    if (!script->property(name)) continue;
    script->setProperty(name, value);
    return true;
  }
  return false;
}

void setReferred(ScriptRun &run, const ScriptReference &reference, const ScriptValue &value) {
  if (reference.kind == Kind::Element) {
    setItem(run, reference, value);
  } else if (reference.kind == Kind::Insertion) {
    insert(run, reference, value);
  } else {
    evalProperties::set(run, evalReferences::settled(run, reference.container), reference.term,
                        evalReferences::settled(run, value));
  }
}

/// `set contents of x to v` for a reference x.
void setContents(ScriptRun &run, const Property &property, const ScriptValue &value) {
  const ScriptValue held = property.container ? evalExpressions::evaluate(run, *property.container) : run.it;
  if (held.is(Type::Reference)) {
    const ScriptReferencePtr reference = held.reference();
    return setReferred(run, *reference, value);
  }
  if (!property.container) throw cannotSet(property.term);
  evalAssignments::assign(run, *property.container, value);
}

void setProperty(ScriptRun &run, const Expression &target, const Property &property,
                 const ScriptValue &value) {
  if (property.term == u"contents") return setContents(run, property, value);
  const ScriptReference reference = evalReferences::specify(run, target, false);
  const ScriptValue holder = evalReferences::settled(run, reference.container);
  if (property.term == u"text item delimiters" && !holder.is(Type::Object)) {
    return run.setDelimiters(evalReferences::settled(run, value));
  }
  if (holder.is(Type::Record)) return setField(holder, property.term, value);
  if (holder.is(Type::Instance)) {
    if (setInstanceProperty(*holder.instance(), property.term, value)) return;
    if (property.container)
      throw cannotSet(property.term + QStringLiteral(" of ") + scriptDescriptions::describe(holder));
    return run.setVariable(property.term, value);
  }
  if (holder.is(Type::Date)) {
    if (scriptDates::setComponent(holder.date(), property.term, evalReferences::settled(run, value))) return;
    throw cannotSet(property.term + QStringLiteral(" of a date"));
  }
  evalProperties::set(run, holder, property.term, evalReferences::settled(run, value));
}

void takeApart(ScriptRun &run, const List &pattern, const ScriptValue &value) {
  const ScriptValue list = scriptCoercions::toList(evalReferences::settled(run, value));
  if (list.items().size() < pattern.items.size()) {
    throw scriptDescriptions::cannotGet(QStringLiteral("item %1").arg(list.items().size() + 1), list);
  }
  const ScriptListItems items = list.items();
  for (size_t i = 0; i < pattern.items.size(); ++i) evalAssignments::assign(run, *pattern.items[i], items[i]);
}

void takeRecordApart(ScriptRun &run, const Record &pattern, const ScriptValue &value) {
  const ScriptValue record = evalReferences::settled(run, value);
  for (const auto &[name, target] : pattern.fields) {
    evalAssignments::assign(run, *target, evalProperties::get(run, record, name));
  }
}

ScriptValue copyAt(ScriptRun &run, const ScriptValue &value, int depth) {
  if (depth > scriptCoercions::kDeepest) throw scriptDescriptions::tooDeep();
  run.step();
  if (value.is(Type::List)) {
    ScriptListItems items;
    items.reserve(value.items().size());
    for (const ScriptValue &item : value.items()) items.push_back(copyAt(run, item, depth + 1));
    return run.heap.made(ScriptValue::list(std::move(items)));
  }
  if (value.is(Type::Record)) {
    ScriptRecordFields fields;
    for (const auto &[name, field] : value.fields()) fields.emplace_back(name, copyAt(run, field, depth + 1));
    return run.heap.made(ScriptValue::record(std::move(fields)));
  }
  return value.is(Type::Date) ? ScriptValue(value.date()) : value;
}

}  // namespace

void evalAssignments::assign(ScriptRun &run, const Expression &target, const ScriptValue &value) {
  try {
    run.step();
    if (const auto *variable = std::get_if<Variable>(&target.form)) {
      run.setVariable(variable->name, value);
      return;
    }
    if (value.is(Type::NoValue)) {
      throw ScriptError{scriptErrors::kNoResult,
                        QStringLiteral("No result was returned from some part of this expression."),
                        {}};
    }
    if (const auto *property = std::get_if<Property>(&target.form)) {
      setProperty(run, target, *property, value);
    } else if (const auto *list = std::get_if<List>(&target.form)) {
      takeApart(run, *list, value);
    } else if (const auto *record = std::get_if<Record>(&target.form)) {
      takeRecordApart(run, *record, value);
    } else if (std::holds_alternative<Element>(target.form) ||
               std::holds_alternative<Insertion>(target.form)) {
      setReferred(run, evalReferences::specify(run, target, false), value);
    } else {
      throw cannotSet(QStringLiteral("this"));
    }
  } catch (ScriptError &error) {
    if (error.range.length == 0) error.range = target.range;
    throw;
  }
}

ScriptValue evalAssignments::copyOf(ScriptRun &run, const ScriptValue &value) {
  return copyAt(run, value, 0);
}
