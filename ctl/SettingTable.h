#pragma once

#include <QString>
#include <QStringList>

#include "values/Value.h"

/// The settings that the program knows, each with the type of value that belongs under its key.
namespace settings {

bool isKnown(const QString &key);

/// The value that a user means by a text: "true", "yes", "false" and "no", numbers, texts, or words that make
/// a list, whatever belongs under the key. Null with a line in `error` if the text means nothing of the kind.
Value parse(const QString &key, const QString &text, QString *error);

/// Takes "KEY=VALUE" apart; the value as `parse` has it. False with a line in `error`.
[[nodiscard]] bool parseAssignment(const QString &assignment, QString *key, Value *value, QString *error);

/// A line for each stored setting whose value is of a type that does not belong there, telling how it is
/// read.
QStringList complaints();

}  // namespace settings
