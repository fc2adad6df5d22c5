#pragma once

#include <QtGlobal>
#include <optional>

/// The two rows of a group and why they were chosen.
struct GroupMarks {
  qsizetype infoRow = 0;
  qsizetype audioRow = 0;
  /// The criterion that left a single row for the information, and that row's score by it; none and 0 if no
  /// criterion did and the last row was taken.
  std::optional<qint32> infoCriterion;
  qint32 infoScore = 0;
  /// The score of the audio row, with what the preferred kind and the state of the file did to it.
  qint32 audioScore = 0;
};
