#pragma once

#include <QString>
#include <QStringList>

/// The user's session and its applications. Any thread.
class Workspace {
 public:
  virtual ~Workspace() = default;
  /// The name a user sees for the application at a path; empty if there is none.
  virtual QString displayNameOfApplication(const QString &path) const = 0;
  /// The system's name and version in one line, for the log.
  virtual QString systemDescription() const = 0;
  /// Moves a file, a folder with all it holds, or a link (not what it leads to) into the user's trash, whence
  /// the desktop can bring it back. Where only copying can do that the call takes its time. False if
  /// something of it still stands where it was, as a rule all; `error` (may be null) says in one line what,
  /// where and why. At every instant, a kill included, one of the two places holds all of it. Any thread, but
  /// one call for one path at a time.
  [[nodiscard]] virtual bool recycle(const QString &path, QString *error) = 0;
  /// The folders of the user's trash whose names do not begin with ".Trash" themselves; absolute, without a
  /// slash at the end, whether they stand yet or not. Costs nothing.
  virtual QStringList trashFolders() const = 0;
};
