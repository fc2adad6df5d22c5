#pragma once

#include "keeper/script/ScriptObject.h"
#include "keeper/script/ScriptRun.h"

/// Properties of things and of the language's own values.
namespace evalProperties {

/// A property of a value that is no reference; -1728 if it has none of that term, -600 for an application
/// that does not run.
ScriptValue get(ScriptRun &run, const ScriptValue &container, const QString &term);
/// Changes a property of a thing.
void set(ScriptRun &run, const ScriptValue &thing, const QString &term, const ScriptValue &value);

/// The thing of a value that is an Object; -600 if it is an application that does not run.
ScriptObject *living(const ScriptValue &thing);

}  // namespace evalProperties
