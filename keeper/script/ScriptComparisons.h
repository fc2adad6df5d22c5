#pragma once

#include "keeper/script/ScriptTextRules.h"
#include "keeper/script/ScriptValue.h"

/// How values compare. Values that are references are compared as references; the caller resolves what it
/// wants resolved.
namespace scriptComparisons {

/// `=`: nothing is coerced; numbers by value, lists item by item, records field by field in any order, things
/// by identity. -2706 for lists nested too deeply.
bool areEqual(const ScriptValue &a, const ScriptValue &b, const ScriptTextRules &rules);

/// Below, equal to or above 0; `b` is coerced to the class of `a`. -1700 for what has no order.
int compare(const ScriptValue &a, const ScriptValue &b, const ScriptTextRules &rules);

/// The right is coerced to the left's class: a stretch of a text, a run of a list, fields of a record.
bool contains(const ScriptValue &whole, const ScriptValue &part, const ScriptTextRules &rules);
bool startsWith(const ScriptValue &whole, const ScriptValue &part, const ScriptTextRules &rules);
bool endsWith(const ScriptValue &whole, const ScriptValue &part, const ScriptTextRules &rules);

}  // namespace scriptComparisons
