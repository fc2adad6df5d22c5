#pragma once

#include <optional>
#include <vector>

#include "ctl/ScanRequest.h"

/// What the merge is told beside what every scan is told.
struct MergeRequest {
  /// The numbers of the groups to merge; nothing for all.
  std::optional<std::vector<qint64>> groups;
  bool dryRun = false;
  /// The plan is agreed to beforehand.
  bool yes = false;

  /// The options by which it is told, without a value and with one, and how they are used.
  static QStringList flagNames();
  static QStringList valueNames();
  static QString usage();

  /// Takes over what was given, settings into `scan`. False with a line in `error` for what means nothing.
  [[nodiscard]] bool take(const Options &options, ScanRequest *scan, QString *error);
};
