#include "keeper/script/ScriptComparisons.h"

#include <algorithm>

#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptDescriptions.h"
#include "keeper/script/ScriptObject.h"
#include "keeper/script/ScriptTextElements.h"

using Type = ScriptValue::Type;

namespace {

/// Compares values, and knows how deep it is in them.
class Equality {
 public:
  explicit Equality(const ScriptTextRules &rules_) : rules(rules_) {}

  bool areEqual(const ScriptValue &a, const ScriptValue &b) {
    if (a.isNumber() && b.isNumber()) {
      return a.type() == b.type() && a.is(Type::Integer) ? a.integer() == b.integer()
                                                         : a.number() == b.number();
    }
    if (a.type() != b.type()) return false;
    switch (a.type()) {
      case Type::NoValue:
      case Type::Missing:
        return true;
      case Type::Boolean:
        return a.boolean() == b.boolean();
      case Type::Text:
        return rules.areEqual(a.text(), b.text());
      case Type::Date:
        return a.date() == b.date();
      case Type::File:
        return a.file().path == b.file().path;
      case Type::Data:
        return a.data() == b.data();
      case Type::Constant:
      case Type::ClassName:
        return a.term() == b.term();
      case Type::Object:
        return a.object() == b.object() || a.object()->isSame(*b.object());
      case Type::Reference:
        return a.reference() == b.reference();
      case Type::Instance:
        return a.instance() == b.instance();
      default:
        return areEqualInside(a, b);
    }
  }

 private:
  bool areEqualInside(const ScriptValue &a, const ScriptValue &b) {
    if (++depth > scriptCoercions::kDeepest) throw scriptDescriptions::tooDeep();
    if (++visited > scriptCoercions::kMostVisited) throw scriptDescriptions::tooLarge();
    const bool equal = a.is(Type::List) ? areEqualLists(a.items(), b.items()) : areEqualRecords(a, b);
    --depth;
    return equal;
  }

  bool areEqualLists(const ScriptListItems &a, const ScriptListItems &b) {
    if (&a == &b) return true;
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [this](const ScriptValue &x, const ScriptValue &y) { return areEqual(x, y); });
  }

  bool areEqualRecords(const ScriptValue &a, const ScriptValue &b) {
    if (a.fields().size() != b.fields().size()) return false;
    return std::all_of(a.fields().begin(), a.fields().end(), [&](const auto &field) {
      const ScriptValue *other = b.field(field.first);
      return other && areEqual(field.second, *other);
    });
  }

  const ScriptTextRules &rules;
  int depth = 0;
  qint64 visited = 0;
};

bool isRunAt(const ScriptListItems &whole, size_t at, const ScriptListItems &part,
             const ScriptTextRules &rules) {
  return std::equal(
      part.begin(), part.end(), whole.begin() + std::ptrdiff_t(at),
      [&](const ScriptValue &a, const ScriptValue &b) { return Equality(rules).areEqual(a, b); });
}

bool listContains(const ScriptListItems &whole, const ScriptListItems &part, const ScriptTextRules &rules) {
  for (size_t at = 0; at + part.size() <= whole.size(); ++at) {
    if (isRunAt(whole, at, part, rules)) return true;
  }
  return false;
}

bool recordContains(const ScriptValue &whole, const ScriptValue &part, const ScriptTextRules &rules) {
  if (!part.is(Type::Record)) throw scriptDescriptions::cannotMake(part, QStringLiteral("record"));
  return std::all_of(part.fields().begin(), part.fields().end(), [&](const auto &field) {
    const ScriptValue *other = whole.field(field.first);
    return other && Equality(rules).areEqual(field.second, *other);
  });
}

template <typename Number>
int sign(Number a, Number b) {
  return a < b ? -1 : a > b ? 1 : 0;
}

}  // namespace

bool scriptComparisons::areEqual(const ScriptValue &a, const ScriptValue &b, const ScriptTextRules &rules) {
  return Equality(rules).areEqual(a, b);
}

int scriptComparisons::compare(const ScriptValue &a, const ScriptValue &b, const ScriptTextRules &rules) {
  if (b.is(Type::Missing)) throw scriptDescriptions::cannotMake(b, scriptDescriptions::classOf(a));
  switch (a.type()) {
    case Type::Integer:
    case Type::Real:
      return sign(a.number(), scriptCoercions::toReal(b));
    case Type::Text:
      return rules.compare(a.text(), scriptCoercions::toText(b, rules));
    case Type::Date: {
      const ScriptValue date = scriptCoercions::coerce(b, QStringLiteral("date"), rules);
      return sign(a.date().seconds, date.date().seconds);
    }
    case Type::Constant:
      if (scriptDescriptions::classOf(a) == u"constant") break;
      return sign(scriptCoercions::toReal(a), scriptCoercions::toReal(b));
    default:
      break;
  }
  throw scriptDescriptions::cannotMake(a, QStringLiteral("number"));
}

bool scriptComparisons::contains(const ScriptValue &whole, const ScriptValue &part,
                                 const ScriptTextRules &rules) {
  if (whole.is(Type::List)) {
    return listContains(whole.items(), scriptCoercions::toList(part).items(), rules);
  }
  if (whole.is(Type::Record)) return recordContains(whole, part, rules);
  return scriptText::contains(scriptCoercions::toText(whole, rules), scriptCoercions::toText(part, rules),
                              rules);
}

bool scriptComparisons::startsWith(const ScriptValue &whole, const ScriptValue &part,
                                   const ScriptTextRules &rules) {
  if (whole.is(Type::List)) {
    const ScriptValue run = scriptCoercions::toList(part);
    return run.items().size() <= whole.items().size() && isRunAt(whole.items(), 0, run.items(), rules);
  }
  return scriptText::startsWith(scriptCoercions::toText(whole, rules), scriptCoercions::toText(part, rules),
                                rules);
}

bool scriptComparisons::endsWith(const ScriptValue &whole, const ScriptValue &part,
                                 const ScriptTextRules &rules) {
  if (whole.is(Type::List)) {
    const ScriptValue run = scriptCoercions::toList(part);
    const size_t size = whole.items().size();
    return run.items().size() <= size &&
           isRunAt(whole.items(), size - run.items().size(), run.items(), rules);
  }
  return scriptText::endsWith(scriptCoercions::toText(whole, rules), scriptCoercions::toText(part, rules),
                              rules);
}
