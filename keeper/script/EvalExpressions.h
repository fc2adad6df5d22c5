#pragma once

#include "keeper/script/ScriptExpression.h"
#include "keeper/script/ScriptRun.h"

/// What expressions are worth. All throw ScriptError, with the range of the innermost expression that failed.
namespace evalExpressions {

/// The value as it stands: a variable may hold a reference, a command may give no value.
ScriptValue evaluate(ScriptRun &run, const scriptTree::Expression &expression);
/// The value with references followed; -2763 for no value.
ScriptValue value(ScriptRun &run, const scriptTree::Expression &expression);
/// The way to a property or to elements without walking it; the value of anything else.
ScriptValue unresolved(ScriptRun &run, const scriptTree::Expression &expression);

bool condition(ScriptRun &run, const scriptTree::Expression &expression);
QString text(ScriptRun &run, const scriptTree::Expression &expression);
double real(ScriptRun &run, const scriptTree::Expression &expression);

}  // namespace evalExpressions
