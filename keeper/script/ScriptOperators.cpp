#include "keeper/script/ScriptOperators.h"

#include <cmath>

#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptComparisons.h"
#include "keeper/script/ScriptDescriptions.h"
#include "keeper/script/ScriptError.h"
#include "keeper/script/ScriptNumbers.h"

using scriptTree::Operator;
using Type = ScriptValue::Type;

namespace {

/// The most items of a list that an operator makes.
constexpr size_t kLongestList = 8 * 1024 * 1024;

double finite(double number) {
  if (std::isfinite(number)) return number;
  throw ScriptError{scriptErrors::kNumberTooLarge, QStringLiteral("The number is too large."), {}};
}

[[noreturn]] void divisionByZero(const ScriptValue &left) {
  throw ScriptError{scriptErrors::kDivisionByZero,
                    QStringLiteral("Can't divide %1 by zero.").arg(scriptDescriptions::describe(left)),
                    {}};
}

/// Whole numbers stay within 30 bits, so that their sums and products stay within 64.
bool areSmall(const ScriptValue &a, const ScriptValue &b) {
  const auto isSmall = [](const ScriptValue &value) {
    return value.is(Type::Integer) && value.integer() <= scriptNumbers::kLargestInteger &&
           value.integer() >= -scriptNumbers::kLargestInteger;
  };
  return isSmall(a) && isSmall(b);
}

ScriptValue addOrSubtract(const ScriptValue &left, const ScriptValue &right, int sign) {
  if (left.is(Type::Date)) {
    if (right.is(Type::Date) && sign < 0) {
      return scriptNumbers::wholeIfItFits(left.date().seconds - right.date().seconds);
    }
    return Date{finite(left.date().seconds + sign * scriptCoercions::toReal(right))};
  }
  const ScriptValue a = scriptCoercions::toNumber(left);
  const ScriptValue b = scriptCoercions::toNumber(right);
  if (areSmall(a, b)) return scriptNumbers::whole(a.integer() + sign * b.integer());
  return finite(a.number() + sign * b.number());
}

ScriptValue multiply(const ScriptValue &left, const ScriptValue &right) {
  const ScriptValue a = scriptCoercions::toNumber(left);
  const ScriptValue b = scriptCoercions::toNumber(right);
  if (areSmall(a, b)) return scriptNumbers::whole(a.integer() * b.integer());
  return finite(a.number() * b.number());
}

ScriptValue divide(Operator op, const ScriptValue &left, const ScriptValue &right) {
  const ScriptValue a = scriptCoercions::toNumber(left);
  const ScriptValue b = scriptCoercions::toNumber(right);
  if (b.number() == 0.0) divisionByZero(left);
  if (op == Operator::Divide) return finite(a.number() / b.number());
  if (areSmall(a, b)) {
    return op == Operator::IntegerDivide ? a.integer() / b.integer() : a.integer() % b.integer();
  }
  if (op == Operator::IntegerDivide)
    return scriptNumbers::wholeIfItFits(finite(std::trunc(a.number() / b.number())));
  return finite(std::fmod(a.number(), b.number()));
}

ScriptValue power(const ScriptValue &left, const ScriptValue &right) {
  return finite(std::pow(scriptCoercions::toReal(left), scriptCoercions::toReal(right)));
}

ScriptValue joinedLists(const ScriptValue &left, const ScriptValue &right) {
  const ScriptValue a = scriptCoercions::toList(left);
  const ScriptValue b = scriptCoercions::toList(right);
  if (a.items().size() + b.items().size() > kLongestList) throw scriptDescriptions::tooLarge();
  ScriptListItems items;
  items.reserve(a.items().size() + b.items().size());
  items = a.items();
  items.insert(items.end(), b.items().begin(), b.items().end());
  return ScriptValue::list(std::move(items));
}

ScriptValue joinedRecords(const ScriptValue &left, const ScriptValue &right) {
  ScriptRecordFields fields = left.fields();
  for (const auto &[name, value] : right.fields()) {
    if (!left.field(name)) fields.emplace_back(name, value);
  }
  return ScriptValue::record(std::move(fields));
}

ScriptValue concatenate(const ScriptValue &left, const ScriptValue &right, const ScriptTextRules &rules) {
  if (left.is(Type::Text)) {
    QString tail;
    try {
      tail = scriptCoercions::toText(right, rules);
    } catch (const ScriptError &error) {
      if (error.number != scriptErrors::kCannotMake) throw;
      return joinedLists(left, right);
    }
    if (left.text().size() + tail.size() > scriptCoercions::kLongestText)
      throw scriptDescriptions::tooLarge();
    return left.text() + tail;
  }
  if (left.is(Type::Record) && right.is(Type::Record)) return joinedRecords(left, right);
  return joinedLists(left, right);
}

}  // namespace

ScriptValue scriptOperators::apply(Operator op, const ScriptValue &left, const ScriptValue &right,
                                   const ScriptTextRules &rules) {
  switch (op) {
    case Operator::Power:
      return power(left, right);
    case Operator::Multiply:
      return multiply(left, right);
    case Operator::Divide:
    case Operator::IntegerDivide:
    case Operator::Modulo:
      return divide(op, left, right);
    case Operator::Add:
      return addOrSubtract(left, right, 1);
    case Operator::Subtract:
      return addOrSubtract(left, right, -1);
    case Operator::Concatenate:
      return concatenate(left, right, rules);
    case Operator::Less:
      return scriptComparisons::compare(left, right, rules) < 0;
    case Operator::LessOrEqual:
      return scriptComparisons::compare(left, right, rules) <= 0;
    case Operator::Greater:
      return scriptComparisons::compare(left, right, rules) > 0;
    case Operator::GreaterOrEqual:
      return scriptComparisons::compare(left, right, rules) >= 0;
    case Operator::Equal:
      return scriptComparisons::areEqual(left, right, rules);
    case Operator::NotEqual:
      return !scriptComparisons::areEqual(left, right, rules);
    case Operator::Contains:
      return scriptComparisons::contains(left, right, rules);
    case Operator::DoesNotContain:
      return !scriptComparisons::contains(left, right, rules);
    case Operator::StartsWith:
      return scriptComparisons::startsWith(left, right, rules);
    case Operator::EndsWith:
      return scriptComparisons::endsWith(left, right, rules);
    case Operator::IsIn:
      return scriptComparisons::contains(right, left, rules);
    case Operator::IsNotIn:
      return !scriptComparisons::contains(right, left, rules);
    case Operator::And:
    case Operator::Or:
      break;
  }
  throw scriptDescriptions::cannotMake(left, QStringLiteral("boolean"));
}

ScriptValue scriptOperators::negate(const ScriptValue &value) {
  const ScriptValue number = scriptCoercions::toNumber(value);
  if (areSmall(number, number)) return -number.integer();
  return -number.number();
}
