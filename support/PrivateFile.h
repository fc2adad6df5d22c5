#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "values/Date.h"

/// A file of the user's own in a folder where others may write too. Any thread.
struct PrivateFile {
  QByteArray bytes;
  Date modified;

  /// The whole file, and when it was last written. Nothing with a line in `error` for what cannot be trusted:
  /// a link, whatever is no regular file, what somebody else owns or may write, and what has a second name.
  static std::optional<PrivateFile> read(const QString &path, QString *error);
  /// Puts a new file that only its owner may read in the place of whatever bears the name; a link there is
  /// replaced, never followed. At every instant the old or the new one stands whole. On failure the old one
  /// does, and `error` says what and why.
  [[nodiscard]] static bool write(const QString &path, QByteArrayView contents, QString *error);
  /// Takes the name away; what a link leads to stays. True if there is nothing under the name now.
  static bool remove(const QString &path);
  /// True if there is anything under the name, a link that leads nowhere included.
  static bool exists(const QString &path);
};
