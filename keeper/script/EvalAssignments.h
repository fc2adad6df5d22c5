#pragma once

#include "keeper/script/ScriptExpression.h"
#include "keeper/script/ScriptRun.h"

/// `set` and `copy`.
namespace evalAssignments {

/// Puts a value into a variable, property, field, item or place, or takes a list or record apart into
/// several. -10006 for what cannot be set.
void assign(ScriptRun &run, const scriptTree::Expression &target, const ScriptValue &value);

/// A value that shares no list or record with the given one.
ScriptValue copyOf(ScriptRun &run, const ScriptValue &value);

}  // namespace evalAssignments
