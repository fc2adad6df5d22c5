#pragma once

#include "keeper/script/ScriptExpression.h"
#include "keeper/script/ScriptRun.h"

/// What the language can do without an application: dates, rounding, files, code points, other scripts.
namespace evalBuiltins {

ScriptValue call(ScriptRun &run, const scriptTree::Builtin &builtin);

}  // namespace evalBuiltins
