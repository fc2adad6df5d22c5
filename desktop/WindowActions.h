#pragma once

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
  std::function<void()> cancelOperation;
  /// The problem window gained or lost the focus.
  std::function<void()> focusChanged;
};
