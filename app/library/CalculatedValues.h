#pragma once

#include <functional>

#include "app/library/FileKinds.h"
#include "values/Value.h"

/// What the tables show and no library holds: stars, running time, track of total, short type, spellings.
/// Worked out on first display and kept in the row. Main thread, under the lock of the row's list.
class CalculatedValues {
 public:
  /// `inconsistentName` makes the value of "calc_inconsistentName".
  CalculatedValues(const Dictionary &resources, std::function<Value(const Dictionary &)> inconsistentName);

  /// The value under a "calc_" key of a row; null if there is none. A mutable row keeps it, a missing one as
  /// the empty text.
  Value calculatedValueForDictionaryKey(const Dictionary &row, Key key) const;

  /// The object without any "calc_" value, fit to be written to disk: itself if it holds none.
  static Value objectWithCalculatedValuesRemoved(const Value &object);

 private:
  Value calculated(const Dictionary &row, Key key) const;
  Value typeOf(const Dictionary &row) const;

  FileKinds kinds;
  std::function<Value(const Dictionary &)> calculatedInconsistentName;
};
