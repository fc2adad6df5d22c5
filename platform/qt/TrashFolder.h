#pragma once

#include <QByteArray>
#include <optional>

/// One trash folder as freedesktop.org settles it, version 1.0: "files" holds what was thrown away,
/// "info" a small file for each that says whence and when. Paths are in the file system's own bytes.
class TrashFolder {
 public:
  /// Paths told in "info" are relative to `base` if it is not empty (a trash of another disk must be readable
  /// wherever the disk is mounted), else absolute.
  explicit TrashFolder(QByteArray folder, QByteArray base = {})
      : path(std::move(folder)), baseFolder(std::move(base)) {}

  /// Takes a name for something to come from `original`, and tells in "info" whence it comes. The folders are
  /// made where they are missing. Another process never gets the same name. Nothing if that failed, with the
  /// reason in `errno`.
  [[nodiscard]] std::optional<QByteArray> reserve(const QByteArray &original) const;
  /// Gives a reserved name back.
  void release(const QByteArray &name) const;

  /// Brings the names and the information to the disk; false, with the reason in `errno`, if that failed.
  [[nodiscard]] bool isOnDisk(const QByteArray &name) const;

  /// Where what has that name is to lie.
  QByteArray fileOf(const QByteArray &name) const { return path + "/files/" + name; }
  QByteArray filesFolder() const { return path + "/files"; }
  QByteArray infoFolder() const { return path + "/info"; }

 private:
  QByteArray infoOf(const QByteArray &name) const { return path + "/info/" + name + ".trashinfo"; }
  QByteArray informationOf(const QByteArray &original) const;

  QByteArray path, baseFolder;
};
