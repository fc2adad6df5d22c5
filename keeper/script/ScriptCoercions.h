#pragma once

#include <QString>

#include "keeper/script/ScriptTextRules.h"
#include "keeper/script/ScriptValue.h"

/// What `as` does, and what operators and parameters do by themselves. Values are no references. All throw
/// -1700 where there is no way, and -2708 for a text that would be longer than is allowed.
namespace scriptCoercions {

/// UTF-16 code units of the longest text, and lists inside lists.
constexpr qsizetype kLongestText = 32 * 1024 * 1024;
constexpr int kDeepest = 512;
/// Items that one comparison or coercion looks at: a list that holds itself twice, twenty times over, has
/// more than there is time for.
constexpr qint64 kMostVisited = 32 * 1024 * 1024;

/// `value as type`, by the type's term.
ScriptValue coerce(const ScriptValue &value, const QString &type, const ScriptTextRules &rules);

/// Lists are joined by the first delimiter.
QString toText(const ScriptValue &value, const ScriptTextRules &rules);
/// As a whole or real number: numbers, booleans, texts that spell one, months and weekdays, a list of one.
ScriptValue toNumber(const ScriptValue &value);
/// A number rounded to 64 bits; -2702 beyond them.
qint64 toInteger(const ScriptValue &value);
double toReal(const ScriptValue &value);
bool toBoolean(const ScriptValue &value);
/// Itself if it is a list, the values of a record, else a list of the one value.
ScriptValue toList(const ScriptValue &value);
/// Texts that begin with a slash are paths as they stand, others are read in the notation with colons.
ScriptFile toFile(const ScriptValue &value);

}  // namespace scriptCoercions
