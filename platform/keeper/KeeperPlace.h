#pragma once

#include <QString>

/// Where a user's keeper is met: a folder of the user's own, with the socket and the lock of the one that
/// serves.
struct KeeperPlace {
  QString folder;

  QString socket() const { return folder + QStringLiteral("/keeper.socket"); }
  QString lock() const { return folder + QStringLiteral("/keeper.lock"); }

  /// The folder "tallyfen" in the user's runtime folder (XDG_RUNTIME_DIR), or "tallyfen-UID" in the temporary
  /// one where the system has none.
  static KeeperPlace ofUser(const QString &temporaryFolder);
  /// True if the folder stands, is no link, belongs to this user and is closed to everybody else. With
  /// `error` (may be null) in one line what is wrong.
  [[nodiscard]] bool isSafe(QString *error) const;
  /// Makes the folder, or closes one of the user's own to others; then as `isSafe`.
  [[nodiscard]] bool prepare(QString *error) const;
};
