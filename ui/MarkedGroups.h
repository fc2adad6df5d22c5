#pragma once

#include <optional>

#include "values/Value.h"

/// How many groups of duplicates hold a row with `markInfo` and a row with `markAudio`. A click is told
/// beforehand and afterwards, so that the whole list need not be walked for it. Main thread, under the list's
/// lock; the list's rows of one group stand next to each other.
class MarkedGroups {
 public:
  /// Counts all groups anew.
  void count(const Array &rows);
  /// True if the count is about this list with as many rows as it has now.
  bool isAbout(const Array &rows) const;
  bool any() const { return marked > 0; }

  /// The first row of the first group that holds both marks; none if there is no such group.
  static std::optional<qsizetype> firstOf(const Array &rows);

  /// The rows of the group that a row belongs to, as [first, end).
  struct Range {
    qsizetype first = 0;
    qsizetype end = 0;
  };
  static Range groupAround(const Array &rows, qsizetype row);
  /// The marks of these rows, which are one group, are about to change; `groupDidChange` follows.
  void groupWillChange(const Array &rows, Range group);
  void groupDidChange(const Array &rows, Range group);

 private:
  /// The group whose first row is told.
  static Range groupFrom(const Array &rows, qsizetype first);
  static bool isMarked(const Array &rows, Range group);

  /// Held, so that its identity cannot pass to another list.
  Array counted;
  qsizetype countedRows = 0;
  qsizetype marked = 0;
};
