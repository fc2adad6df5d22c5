#pragma once

#include "keeper/script/ScriptExpression.h"
#include "keeper/script/ScriptRun.h"

/// Handlers, and the script objects that have them.
namespace evalHandlers {

/// `f(a)`: to its target, or else to `it`. -1708 if that has no such handler.
ScriptValue call(ScriptRun &run, const scriptTree::HandlerCall &call);
/// Calls a handler of a script object or of those around it; -1708 if there is none, -1701 for another number
/// of arguments than it has parameters.
ScriptValue callNamed(ScriptRun &run, const ScriptInstancePtr &script, const QString &name,
                      ScriptListItems arguments);
/// Runs a script object: its `run` handler, or the statements outside its handlers.
ScriptValue run(ScriptRun &run, const ScriptInstancePtr &script, ScriptListItems arguments);

/// Makes a script object: works out its properties and makes the objects in it.
ScriptInstancePtr load(ScriptRun &run, const QString &name, const ParsedScriptPtr &source,
                       const scriptTree::Script &script, const ScriptInstancePtr &enclosing);

}  // namespace evalHandlers
