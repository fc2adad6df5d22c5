#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "app/library/FileKinds.h"
#include "values/Value.h"

/// What is asked about a file on disk: its size in bytes, or nothing if there is none; -1 for a size that is
/// not known.
using FileSizeOf = std::function<std::optional<qint64>(const QString &path)>;

/// The user's wishes for the marks, read once for each run.
struct AutomarkRules {
  /// The criteria for the row of the information, the most important first: numbers from 0 to 7; others tell
  /// no rows apart.
  std::vector<qint32> preferInfoTypes;
  /// The criterion for the row of the audio: numbers from 0 to 6; others are 0.
  qint32 preferAudioData15 = 0;
  /// Kilobits per second.
  qint32 preferAudioFileBitRate = 0;
  /// The preferred kind of file; 6 is any that is not protected, -1 none.
  qint32 preferredKind = -1;

  /// What the settings ask for at present.
  static AutomarkRules fromPreferences();
  /// What settings in a table ask for, under the same keys. Numbers saturate at 32 bits; a text reads as the
  /// whole number that it begins with, else 0. Among the criteria, what is neither text nor number is left
  /// out; criteria that are no list are none.
  static AutomarkRules fromSettings(const Dictionary &settings);
};

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

/// Chooses the two rows of one group of at least one row. Asks the disk about each row's file once.
/// Arithmetic wraps at 32 bits, as scores do. For many groups use a `MarkChooser`.
GroupMarks chooseMarks(std::span<const Dictionary> rows, const AutomarkRules &rules, const FileKinds &kinds,
                       const FileSizeOf &fileSize);
