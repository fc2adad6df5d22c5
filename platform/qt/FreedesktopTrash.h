#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <QString>
#include <functional>

/// The trash as freedesktop.org settles it, version 1.0: what lies on the file system of the home trash
/// goes there; what lies on another goes into the trash in the top folder of that one, and where none can be
/// had it is copied whole to the home trash. Any thread.
class FreedesktopTrash {
 public:
  /// Answers the folder at which the file system that holds a folder is mounted.
  using FindTop = std::function<QByteArray(const QByteArray &folder)>;

  /// The home trash, and the folders above it, are made when something is put there.
  explicit FreedesktopTrash(const QString &homeTrash, FindTop top = topOfFileSystem);

  /// As `Workspace::recycle` says.
  [[nodiscard]] bool put(const QString &path, QString *error) const;

  /// The folder at which the file system that holds `folder` is mounted.
  static QByteArray topOfFileSystem(const QByteArray &folder);

 private:
  const char *move(const QByteArray &original, dev_t device) const;

  QByteArray home;
  FindTop findTop;
};
