#include "keeper/script/EvalElements.h"

#include <QRandomGenerator>

#include "keeper/script/EvalFilter.h"
#include "keeper/script/EvalObjectElements.h"
#include "keeper/script/EvalProperties.h"
#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptDescriptions.h"
#include "keeper/script/ScriptTextElements.h"

using Selector = ScriptReference::Selector;
using Type = ScriptValue::Type;

namespace {

/// The most parts that a text is taken apart into.
constexpr qsizetype kMostParts = 8 * 1024 * 1024;

std::optional<scriptText::Element> textElement(const QString &className) {
  if (className == u"character") return scriptText::Element::Character;
  if (className == u"word") return scriptText::Element::Word;
  if (className == u"paragraph") return scriptText::Element::Paragraph;
  if (className == u"text item") return scriptText::Element::TextItem;
  return std::nullopt;
}

/// The first and last position of a range among so many, in order; nothing if one is out of range.
std::optional<std::pair<qsizetype, qsizetype>> rangeOf(const ScriptReference &element, qsizetype count) {
  const auto place = [count](const ScriptValue &key) -> qsizetype {
    const qint64 number = scriptCoercions::toInteger(key);
    if (number > count || number < -count || number == 0) return -1;
    return number > 0 ? number - 1 : count + number;
  };
  const qsizetype from = place(element.key);
  const qsizetype to = place(element.upTo);
  if (from < 0 || to < 0) return std::nullopt;
  return std::minmax(from, to);
}

/// What a selector picks of values that are all there.
ScriptValue picked(ScriptRun &run, const ScriptListItems &items, const ScriptReference &element,
                   const ScriptValue &container) {
  if (element.selector == Selector::Every) return run.heap.made(ScriptValue::list(items));
  const qsizetype count = qsizetype(items.size());
  if (element.selector == Selector::Range) {
    if (const auto range = rangeOf(element, count)) {
      return run.heap.made(ScriptValue::list(
          ScriptListItems(items.begin() + range->first, items.begin() + range->second + 1)));
    }
  } else if (const auto at = evalElements::position(element, count)) {
    return items[size_t(*at)];
  }
  throw scriptDescriptions::cannotGet(element.term, container);
}

/// `text 2 thru 5 of s`, and single characters, without taking the whole text apart.
std::optional<ScriptValue> stretchOf(ScriptRun &run, const QString &text, const ScriptReference &element) {
  scriptText::Stretch found{0, -1};
  const bool isIndex = element.selector == Selector::Key || element.selector == Selector::Index;
  if (element.selector == Selector::Range && element.term == u"text") {
    found = scriptText::characterStretch(text, scriptCoercions::toInteger(element.key),
                                         scriptCoercions::toInteger(element.upTo));
  } else if (isIndex && (element.term == u"character" || element.term == u"text")) {
    const qint64 index = scriptCoercions::toInteger(element.key);
    found = scriptText::characterStretch(text, index, index);
  } else {
    return std::nullopt;
  }
  if (found.length < 0) throw scriptDescriptions::cannotGet(element.term, ScriptValue(text));
  return run.heap.made(text.mid(found.start, found.length));
}

ScriptListItems partsOf(const QString &text, scriptText::Element kind, const ScriptTextRules &rules) {
  const bool toCharacters = kind == scriptText::Element::Character || kind == scriptText::Element::TextItem;
  if (toCharacters && text.size() > kMostParts) throw scriptDescriptions::tooLarge();
  const std::vector<scriptText::Stretch> stretches = scriptText::stretches(text, kind, rules);
  if (qsizetype(stretches.size()) > kMostParts) throw scriptDescriptions::tooLarge();
  ScriptListItems parts;
  parts.reserve(stretches.size());
  for (const scriptText::Stretch &stretch : stretches) {
    parts.emplace_back(text.mid(stretch.start, stretch.length));
  }
  return parts;
}

/// Parts of texts and lists are not tested.
void refuseTest(const ScriptValue &container, const ScriptReference &element) {
  if (!element.filter) return;
  throw scriptDescriptions::cannotGet(element.term + QStringLiteral(" whose test holds"), container);
}

ScriptValue ofText(ScriptRun &run, const ScriptValue &container, const ScriptReference &element) {
  refuseTest(container, element);
  if (element.term == u"text" && element.selector == Selector::Every) return container;
  if (auto stretch = stretchOf(run, container.text(), element)) return *stretch;
  const bool isItem = element.term == u"item";
  const auto kind = isItem ? scriptText::Element::Character : textElement(element.term);
  if (!kind) throw scriptDescriptions::cannotGet(element.term, container);
  return picked(run, partsOf(container.text(), *kind, run.rules), element, container);
}

bool isOfClass(const ScriptValue &value, const QString &className) {
  if (className == u"item") return true;
  if (className == u"number") return value.isNumber();
  return scriptDescriptions::classOf(value) == className;
}

ScriptValue ofList(ScriptRun &run, const ScriptValue &container, const ScriptReference &element) {
  refuseTest(container, element);
  if (element.term == u"item") return picked(run, container.items(), element, container);
  ScriptListItems found;
  for (const ScriptValue &item : container.items()) {
    if (isOfClass(item, element.term)) found.push_back(item);
  }
  return picked(run, found, element, container);
}

}  // namespace

std::optional<qsizetype> evalElements::position(const ScriptReference &element, qsizetype count) {
  qint64 number = 0;
  switch (element.selector) {
    case Selector::Ordinal:
      number = element.ordinal;
      break;
    case Selector::Middle:
      number = (count + 1) / 2;
      break;
    case Selector::Some:
      number = count == 0 ? 0 : QRandomGenerator::global()->bounded(quint32(count)) + qint64(1);
      if (count == 0) return std::nullopt;
      break;
    default:
      number = scriptCoercions::toInteger(element.key);
  }
  if (number == 0 && count > 0) {
    throw ScriptError{
        scriptErrors::kInvalidIndex, QStringLiteral("Can't get %1 0. Invalid index.").arg(element.term), {}};
  }
  if (number > count || number < -count || number == 0) return std::nullopt;
  return number > 0 ? number - 1 : count + number;
}

ScriptValue evalElements::get(ScriptRun &run, const ScriptValue &container, const ScriptReference &element) {
  switch (container.type()) {
    case Type::Object:
      return evalObjectElements::get(run, container, element);
    case Type::Text:
      return ofText(run, container, element);
    case Type::List:
      return ofList(run, container, element);
    case Type::Record:
      return ofList(run, scriptCoercions::toList(container), element);
    default:
      throw scriptDescriptions::cannotGet(element.term, container);
  }
}

qint64 evalElements::countEach(ScriptRun &run, const ScriptValue &container, const QString &className) {
  if (container.is(Type::Object)) return evalProperties::living(container)->elementCount(className);
  ScriptReference every;
  every.kind = ScriptReference::Kind::Element;
  every.term = className;
  return countItems(get(run, container, every));
}

qint64 evalElements::countItems(const ScriptValue &value) {
  switch (value.type()) {
    case Type::List:
      return qint64(value.items().size());
    case Type::Text:
      return scriptText::characterCount(value.text());
    case Type::Record:
      return qint64(value.fields().size());
    case Type::Object:
      return 1;
    default:
      throw scriptDescriptions::cannotGet(QStringLiteral("the number of items"), value);
  }
}
