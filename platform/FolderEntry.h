#pragma once

#include <QByteArray>

/// The names in a folder, paths in the file system's own bytes. On failure `errno` says why. Any thread.
namespace folderEntry {

/// Renames, but not over anything: EEXIST if there is something.
[[nodiscard]] bool renameWithoutReplacing(const QByteArray &from, const QByteArray &to);
/// Brings a folder's entries to the disk. Some file systems cannot; their renames are as safe as they get.
[[nodiscard]] bool syncFolder(const QByteArray &folder);

}  // namespace folderEntry
