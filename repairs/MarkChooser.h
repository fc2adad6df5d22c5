#pragma once

#include <QHash>

#include "repairs/AutomarkRow.h"
#include "repairs/AutomarkRules.h"

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
