#pragma once

#include "keeper/script/EvalStatements.h"

/// `repeat` in all its forms.
namespace evalLoops {

/// Executes a loop; never answers Exited.
evalStatements::Flow repeat(ScriptRun &run, const scriptTree::Repeat &statement);

}  // namespace evalLoops
