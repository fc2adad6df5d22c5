#pragma once

#include "support/PreferenceKeys.h"
#include "values/Value.h"

/// The program's own preference domain, read at the point of use. A value of a wrong type reads as its
/// nearest worth: a text as the number it begins with, anything without worth as absent. Any thread.
namespace prefs {

/// The stored value, or null.
Value value(const QString &key);
bool isTrue(const QString &key);
/// Whole number, saturating at 32 bits; 0 if absent.
qint32 integer(const QString &key);
double number(const QString &key);
/// The text; empty for anything that is none.
QString text(const QString &key);

/// Stores a value; null removes the key.
void set(const QString &key, const Value &value);
void remove(const QString &key);
/// Makes the settings survive a loss of power; a failure is logged.
void synchronize();

}  // namespace prefs
