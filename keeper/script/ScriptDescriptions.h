#pragma once

#include <QString>

#include "keeper/script/ScriptError.h"
#include "keeper/script/ScriptValue.h"

/// How values are named in messages, and the errors that name them.
namespace scriptDescriptions {

/// The term of a value's class: "text", "list", "user playlist". A reference is "reference".
QString classOf(const ScriptValue &value);
/// A value as a script would write it, shortened where it is long.
QString describe(const ScriptValue &value);

/// -1700: Can't make "abc" into type integer.
ScriptError cannotMake(const ScriptValue &value, const QString &type);
/// -1728: Can't get name of "abc".
ScriptError cannotGet(const QString &what);
ScriptError cannotGet(const QString &what, const ScriptValue &container);
/// -2708.
ScriptError tooLarge();
/// -2706.
ScriptError tooDeep();

}  // namespace scriptDescriptions
