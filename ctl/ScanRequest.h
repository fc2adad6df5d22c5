#pragma once

#include <QStringList>
#include <utility>
#include <vector>

#include "ctl/Options.h"
#include "values/Value.h"

/// What every command that scans is told: which library, where its media are, the settings of this one run.
struct ScanRequest {
  QString library, media;
  std::vector<std::pair<QString, Value>> settings;
  bool json = false;

  /// The options by which it is told, without a value and with one, and how they are used.
  static QStringList flagNames();
  static QStringList valueNames();
  static QString usage();

  /// Takes over what was given. False with a line in `error` for a setting that is unknown or means nothing.
  [[nodiscard]] bool take(const Options &options, QString *error);
};
