#pragma once

#include <functional>

#include "values/Value.h"

/// What the tables of rows and of related tracks share in working out what they show. Each answers null where
/// there is nothing to show. Main thread, under the lock of the row's list.
namespace CalculatedTexts {

/// The value that a row keeps under `key`, else what `calculate` answers. A mutable row then keeps that, a
/// missing one as the empty text; but never a "track of total" of two numbers, which is worked out anew.
Value keptOrCalculated(const Dictionary &row, Key key, const std::function<Value()> &calculate);

/// "Total Time" as "1:01" or "1:01:01", a second begun counting whole.
Value humanTimeOf(const Dictionary &row);
/// "3", or "3/12" where the count is known.
Value trackOfTotalOf(const Dictionary &row);
/// The text before the first blank of a kind.
QString firstWordOf(const QString &kind);
/// A label with the row's bit rate, if it has one, behind it.
Value withBitRate(const QString &label, const Dictionary &row);

}  // namespace CalculatedTexts
