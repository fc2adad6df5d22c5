#pragma once

#include "keeper/script/ScriptReference.h"
#include "keeper/script/ScriptRun.h"

/// Ways to properties, elements and places: made of expressions, and walked.
namespace evalReferences {

/// What stands for the language itself, `AppleScript`.
ScriptValue language();

/// The way that a Property, Element or Insertion describes. Its containers are ways too if it is to stay
/// unresolved, else values, but for sets of things, which are asked for columns as a whole.
ScriptReference specify(ScriptRun &run, const scriptTree::Expression &expression, bool lazily);

/// The value of a Property or Element.
ScriptValue get(ScriptRun &run, const scriptTree::Expression &expression);
/// Where a way leads; -1728 if it leads nowhere.
ScriptValue resolve(ScriptRun &run, const ScriptReference &reference);
/// A value, with references in it followed to the end.
ScriptValue settled(ScriptRun &run, ScriptValue value);

/// How many things of a class, or how many items, there are; `each` may be empty.
qint64 count(ScriptRun &run, const ScriptValue &counted, const QString &each);
bool exists(ScriptRun &run, const scriptTree::Expression &expression);

/// True if it leads to many things, whose properties are a column.
bool isMany(const ScriptValue &value);
/// The application at the root of a value's way; null if the way names none.
ScriptApplication *applicationOf(const ScriptValue &value);

}  // namespace evalReferences
