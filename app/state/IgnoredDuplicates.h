#pragma once

#include <QSet>
#include <QString>
#include <mutex>

#include "app/state/DeclarationIndex.h"
#include "values/Value.h"

struct AppState;

/// The rows that the user declared not to be duplicates: lists of persistent IDs, each pairwise no duplicates
/// of one another. Kept in the preferences under a key of the library's own, loaded at first use, written at
/// the end of the process and not before: a crash loses the declarations of its run. Changed on the main
/// thread while no scan runs; a scan may read (and load) it on its thread.
class IgnoredDuplicates {
 public:
  explicit IgnoredDuplicates(const AppState &appState) : state(appState) {}

  /// "NotDup-" and the media folder, the home folder abbreviated, or else the library's persistent ID. Fixed
  /// at first use, which is on the main thread: it asks the loaded library. A scan's beginning sees to that.
  QString ignoredDuplicatePIDsPrefsKey();
  /// Where an earlier version kept the declarations of the loaded library. Read only. Main thread.
  QString ignoredDuplicatePIDsPath() const;
  /// All declarations, mutable: one list of persistent IDs each. Only appended to by whoever asks for it.
  Array ignoredDuplicatePIDsArray();
  /// Everything declared with this track, itself included; empty if there is nothing. A look-up.
  QSet<QString> ignoredDuplicatesForPID(const QString &pid);
  /// Adds a declaration, in memory.
  void addIgnoredDuplicatePIDs(const Array &pids);
  /// Forgets all declarations, in memory.
  void clear();
  /// Writes what is in memory to the preferences and drops it from memory; nothing if it was never loaded.
  /// What another process has stored or forgotten since the loading stays so; this one's additions follow it.
  /// A value found there that is no list is kept under a key of its own, the first free one of "KEY-foreign",
  /// "KEY-foreign2" and so on.
  void writeIgnoredDuplicatePIDs();

  /// What a property-list file of any format holds; null if it holds nothing or cannot be read. A file that
  /// is no property list is told to the log.
  static Value arrayFromPlistFile(const QString &path);
  /// The first list found in a folder's files of an earlier version, the last name first; null if there is
  /// none.
  static Value arrayFromOlderFiles(const QString &folder);

 private:
  // All with the guard held.
  const QString &fixedPrefsKey();
  const Array &loaded();
  Value formerDeclarations() const;
  void logForeignMembers() const;
  Array declarationsToStore() const;
  void setForeignValueAside();

  const AppState &state;
  std::recursive_mutex guard;
  // Guarded by guard.
  QString prefsKey, formerPath;
  Array declarations;
  /// As they were loaded; none once they have been forgotten.
  Array loadedDeclarations;
  DeclarationIndex index;
  /// What the preferences hold instead of a list, until it is set aside.
  Value foreignValue;
};
