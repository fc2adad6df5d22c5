#pragma once

#include "keeper/script/ScriptRun.h"
#include "keeper/script/ScriptTree.h"

/// Statements at work in the frame of the run.
namespace evalStatements {

/// How a block was left: at its end, by `exit repeat`, or by `return`.
enum class Flow { On, Exited, Returned };

/// Executes a block; values of its statements are the frame's `result`. Throws ScriptError, with the range of
/// the innermost expression or statement that failed.
Flow execute(ScriptRun &run, const scriptTree::Block &block);

}  // namespace evalStatements
