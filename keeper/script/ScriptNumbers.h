#pragma once

#include <QString>
#include <optional>

#include "keeper/script/ScriptValue.h"

/// Numbers as the language has them.
namespace scriptNumbers {

/// The largest whole number; beyond it numbers are reals.
constexpr qint64 kLargestInteger = 536'870'911;

/// A whole number, or a real beyond the largest.
ScriptValue whole(qint64 number);
/// A real that is a whole number becomes one where it fits, else stays a real.
ScriptValue wholeIfItFits(double number);

/// "1.5", "1.0", and from 10,000 up and for tiny ones "1.23E+4": 12 digits at most, the mark a point.
QString realText(double number);
/// The number that a text spells, white space around it left out: whole without a point or exponent. Nothing
/// if it spells none.
std::optional<ScriptValue> fromText(const QString &text);

/// Rounded to the nearest whole number, halves to the even one; -1700 for what is no number and -2702 for
/// one too large for 64 bits.
qint64 rounded(double number);

}  // namespace scriptNumbers
