#pragma once

#include <QString>

/// Puts files in a place where nothing else is. Nothing is ever replaced, and what was interrupted leaves
/// nothing under the new name. Any thread.
namespace filePlacing {

enum class Outcome {
  Placed,
  /// Something else bears that name.
  Taken,
  /// `error` says why; nothing new is left behind.
  Failed
};

/// The file under a second name: the same file where its disk can do that, else a whole copy. The old name
/// stays. Missing folders are made.
[[nodiscard]] Outcome addName(const QString &file, const QString &name, QString *error);
/// A whole copy that has reached the disk, with the file's date. Missing folders are made.
[[nodiscard]] Outcome copy(const QString &file, const QString &name, QString *error);
/// True if both names are of one file.
bool isSameFile(const QString &a, const QString &b);
/// Removes folders that hold nothing, from this one upwards to, and without, `top`.
void removeEmptyFolders(const QString &folder, const QString &top);

}  // namespace filePlacing
