#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <optional>

#include "platform/MainLoop.h"
#include "support/TaskGuard.h"
#include "values/Value.h"

struct AppState;

/// The three groups of settings that a scan depends on.
enum class SettingsGroup { Duplicates, Automark, Inconsistent };
inline constexpr int kSettingsGroupCount = 3;

/// The mechanics around the settings: first values, reset, and the notes which tell that a changed setting
/// has not been applied by a scan yet. The window writes the keys, whoever needs them reads them. Main
/// thread.
class PrefsController {
 public:
  explicit PrefsController(AppState &appState) : state(appState) {}
  PrefsController(const PrefsController &) = delete;
  ~PrefsController();

  /// First values, and the watch over the keys of the groups. Once.
  void awakeFromNib();
  /// Shows the preferences window at one of its tabs ("library", "dupe", "marks", "names").
  void revealTabWithIdentifier(const QString &identifier);

  /// Gives the stored order of the criteria for marks to `setPriorityArray`; stores the first one if there is
  /// none.
  void updatePriorities();
  /// RKPriorityChangedNotification: stores the order that the user has chosen.
  void infoPriorityChanged(const QStringList &priorities);
  /// Shows an order of the criteria in the preferences window; may be empty.
  std::function<void(const QStringList &)> setPriorityArray;

  /// Removes every setting that does not begin with "_" or "NS" and stores the first values. Asked for by the
  /// user, it tells so in a sheet and then has the library loaded again.
  void resetToDefaults(bool byUser);

  void noteAppliedDupeValues() { noteApplied(SettingsGroup::Duplicates); }
  void noteAppliedAutomarkValues() { noteApplied(SettingsGroup::Automark); }
  void noteAppliedInconsistentValues() { noteApplied(SettingsGroup::Inconsistent); }

  /// Looks at all groups anew: shows or hides their notes, and keeps at least one test for duplicates on.
  void changedPreferences();
  /// True if the group has changed since the last scan began.
  bool isChangedSinceScan(SettingsGroup group) const;

  /// The address of the update feed for the kind of versions that the user wants.
  static QString updateFeedURL();

  /// The tables of "resources.plist", read once; empty with a line in the log if the file cannot be read. Any
  /// thread after the first call.
  static Dictionary resources();

  /// The keys of a group.
  static const QStringList &keysOfGroup(SettingsGroup group);

 private:
  void observeValue(const QString &key);
  void resetDidEnd();
  void noteApplied(SettingsGroup group);

  AppState &state;
  bool awake = false;
  bool observing = false;
  /// Keeps a change made while one is being looked at from being looked at again.
  bool observingNow = false;
  MainLoop::TimerID revealTimer = 0;
  TaskGuard tasks;
  std::array<std::optional<Dictionary>, kSettingsGroupCount> applied;
  std::array<bool, kSettingsGroupCount> noteVisible{};
};
