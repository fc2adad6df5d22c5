#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <optional>
#include <vector>

#include "values/Value.h"

struct AppState;

/// The rows that the user declared not to be duplicates: lists of persistent IDs, each pairwise no duplicates
/// of one another. Kept in the preferences under a key of the library's own, loaded at first use, written at
/// the end. Changed on the main thread while no scan runs; a scan may read (and load) it on its thread.
class IgnoredDuplicates {
 public:
  explicit IgnoredDuplicates(const AppState &appState) : state(appState) {}

  /// "NotDup-" and the media folder, the home folder abbreviated, or else the library's persistent ID. Fixed
  /// at first use.
  QString ignoredDuplicatePIDsPrefsKey();
  /// Where an earlier version kept the declarations. Read only.
  QString ignoredDuplicatePIDsPath() const;
  /// All declarations, mutable: one list of persistent IDs each.
  Array ignoredDuplicatePIDsArray();
  /// Everything declared with this track, itself included; empty if there is nothing.
  QSet<QString> ignoredDuplicatesForPID(const QString &pid);
  /// Adds a declaration, in memory.
  void addIgnoredDuplicatePIDs(const Array &pids);
  /// Forgets all declarations, in memory.
  void clear();
  /// Writes what is in memory to the preferences and drops it from memory; nothing if it was never loaded.
  void writeIgnoredDuplicatePIDs();

  /// What a property-list file of any format holds; null if it cannot be read.
  static Value arrayFromPlistFile(const QString &path);

 private:
  const AppState &state;
  QString prefsKey;
  Array declarations;
};
