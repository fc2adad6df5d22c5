#pragma once

#include "keeper/script/ScriptObject.h"
#include "keeper/script/ScriptReference.h"
#include "keeper/script/ScriptRun.h"

/// Elements of an application's things.
namespace evalObjectElements {

/// What an Element picks of a thing: a list for a set, else the one. -1728 if there is none, -1719 for
/// index 0.
ScriptValue get(ScriptRun &run, const ScriptValue &container, const ScriptReference &element);

}  // namespace evalObjectElements
