#pragma once

#include "keeper/script/ScriptExpression.h"
#include "keeper/script/ScriptRun.h"

/// Commands of applications.
namespace evalCommands {

/// Sends a command to the application of what stands behind the verb, or else of `it`; answers its reply.
/// -1708 if that is no application's and no script's that has a handler of that name, -1712 if it took longer
/// than the time it has.
ScriptValue send(ScriptRun &run, const scriptTree::Command &command);

}  // namespace evalCommands
