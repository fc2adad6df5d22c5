#pragma once

#include "keeper/script/EvalStatements.h"

/// `error` and `try`.
namespace evalErrors {

[[noreturn]] void raise(ScriptRun &run, const scriptTree::Raise &statement);

/// Executes the body, and where it fails the handler, if that wants the error.
evalStatements::Flow attempt(ScriptRun &run, const scriptTree::Try &statement);

}  // namespace evalErrors
