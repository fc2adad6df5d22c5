#pragma once

#include <QString>

#include "app/state/MergeState.h"

/// The ways of a file that is not kept. None of them ends with audio that stands nowhere: a file is deleted
/// only behind a whole copy of it, or where the user wishes that. Any thread.
namespace unkeptFiles {

/// What became of a file, or what stands in its way.
struct Outcome {
  UnkeptFate fate = UnkeptFate::Gone;
  /// The reason that stops the merge; empty if all went well.
  QString stopReason;
};

/// Puts a file into the trash. One that the trash does not take stops the merge, or is deleted if
/// `deletesOnFailure` and the file may be changed.
Outcome trashFile(const QString &path, bool deletesOnFailure);

/// The copy of a file in a folder.
struct FolderCopy {
  /// Where it stands; empty if it could not be made.
  QString path;
  /// It stood there before.
  bool wasThere = false;
  /// Why there is none, in one line.
  QString error;
  /// The folder takes no copy, so that no other file's would do better; else the file itself cannot be read.
  bool folderIsAtFault = false;
};

/// Copies a file into a folder, which is made if it is not there, under its own name or the next free one
/// with a number. A copy that is there already, of the same size, date and content, is not made again. The
/// copy keeps date and permissions; it has reached the disk and appears whole or not at all.
FolderCopy safelyCopyFileAtPathToFolder(const QString &path, const QString &folder);

/// True if both are files of the same bytes.
bool haveSameContent(const QString &path, const QString &other);

/// Deletes a file if the copy of it is whole; else it stands, and the answer is false.
[[nodiscard]] bool deleteCopiedFile(const QString &path, const QString &copy);

}  // namespace unkeptFiles
