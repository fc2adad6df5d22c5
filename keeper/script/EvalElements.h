#pragma once

#include "keeper/script/ScriptObject.h"
#include "keeper/script/ScriptReference.h"
#include "keeper/script/ScriptRun.h"

/// Elements of things, texts and lists.
namespace evalElements {

/// What an Element picks of a container that is no reference: a list for a set, else the one. -1728 if there
/// is none, -1719 for index 0, -2708 for too many parts of a text.
ScriptValue get(ScriptRun &run, const ScriptValue &container, const ScriptReference &element);

/// The position from 0 that a selector means among so many; nothing if there is none there.
std::optional<qsizetype> position(const ScriptReference &element, qsizetype count);

/// How many elements of a class a value holds.
qint64 countEach(ScriptRun &run, const ScriptValue &container, const QString &className);
/// Items of a list, characters of a text, fields of a record; 1 for a thing, -1728 for the rest.
qint64 countItems(const ScriptValue &value);

}  // namespace evalElements
