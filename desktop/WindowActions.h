#pragma once

#include <QStringList>
#include <functional>

/// What the windows ask of the application. Main thread; each may be empty.
struct WindowActions {
  /// Loads the library anew and scans it.
  std::function<void()> rescan;
  std::function<void()> chooseMediaFolder;
  /// Forgets the media folder that the user chose.
  std::function<void()> useAutomaticMediaFolder;
  std::function<void()> revealPreferences;
  std::function<void()> resetToDefaults;
  std::function<void()> showAbout;
  std::function<void()> showLog;
  std::function<void()> quit;
  /// The commands of the table of duplicates.
  std::function<void()> automark;
  std::function<void()> unmark;
  std::function<void()> notDuplicates;
  std::function<void()> merge;
  /// Another policy for the copies that are not kept was chosen.
  std::function<void()> changedUnkeptPolicy;
  /// Asks for the folder that the files of these copies move to.
  std::function<void()> chooseUnkeptFolder;
  /// Has the stored order of the criteria for marks given to the preferences window.
  std::function<void()> updatePriorities;
  /// Stores an order of the criteria.
  std::function<void(const QStringList &)> storePriorities;
  /// The problem window gained or lost the focus.
  std::function<void()> focusChanged;
};
