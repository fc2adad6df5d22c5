#pragma once

#include "keeper/script/ScriptExpression.h"
#include "keeper/script/ScriptTextRules.h"
#include "keeper/script/ScriptValue.h"

/// What operators make of two values.
namespace scriptOperators {

/// Any operator but `and` and `or`; operands are no references, save those of `=` and `≠`. -1700 where an
/// operand does not fit, -2701 and -2702 of numbers, -2708 for what would be too large.
ScriptValue apply(scriptTree::Operator op, const ScriptValue &left, const ScriptValue &right,
                  const ScriptTextRules &rules);

/// `-x`.
ScriptValue negate(const ScriptValue &value);

}  // namespace scriptOperators
