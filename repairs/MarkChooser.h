#pragma once

#include <QHash>
#include <functional>
#include <span>

#include "app/library/FileKinds.h"
#include "repairs/AutomarkRow.h"
#include "repairs/AutomarkRules.h"
#include "repairs/GroupMarks.h"

/// What is asked about a file on disk: its size in bytes, or nothing if there is none; -1 for a size that is
/// not known.
using FileSizeOf = std::function<std::optional<qint64>(const QString &path)>;

/// Chooses the marks of one group after the other by the same rules. Remembers the kinds of files it has met,
/// as a library has few. One thread.
class MarkChooser {
 public:
  /// All three outlive it.
  MarkChooser(const AutomarkRules &automarkRules, const FileKinds &fileKinds, const FileSizeOf &fileSizeOf)
      : rules(automarkRules), kinds(fileKinds), fileSize(fileSizeOf) {}

  /// The two rows of a group of at least one row.
  GroupMarks choose(std::span<const Dictionary> group);
  /// The same for rows that are gathered already.
  GroupMarks choose(std::vector<AutomarkRow> &group);

 private:
  void chooseInfoRow(GroupMarks &marks);
  /// The candidates that score best, the last of them first, and their score.
  qint32 collectTied(qint32 criterion);
  void chooseAudioRow(GroupMarks &marks);
  qint32 audioScore(const AutomarkRow &row);
  qint32 kindNumber(const QString &kind);

  const AutomarkRules &rules;
  const FileKinds &kinds;
  const FileSizeOf &fileSize;
  QHash<QString, qint32> knownKinds;
  QString lastKind;
  qint32 lastKindNumber = -1;
  /// Of the group in hand; kept for their room.
  std::vector<AutomarkRow> rows;
  std::vector<qsizetype> candidates, tied;
};

/// Chooses the two rows of one group of at least one row. Asks the disk about each row's file once.
/// Arithmetic wraps at 32 bits, as scores do. For many groups use a `MarkChooser`.
GroupMarks chooseMarks(std::span<const Dictionary> rows, const AutomarkRules &rules, const FileKinds &kinds,
                       const FileSizeOf &fileSize);
