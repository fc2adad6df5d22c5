#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

/// The command line of `tallyfen-keeper`.
struct KeeperOptions {
  /// Empty for the user's own.
  QString folder;
  /// Empty for none.
  QString importFile;
  std::vector<std::pair<QString, QString>> mapping;
  QString exportFile;
  /// Ends when the import and the export are done, instead of serving.
  bool once = false;
  bool help = false;
  bool version = false;

  static QString usage();
  /// Paths become absolute. Nothing, with one line in `error`, for what cannot be understood.
  static std::optional<KeeperOptions> parse(const QStringList &arguments, QString *error);
};
