#pragma once

#include "platform/MainLoop.h"

struct AppState;

/// Whether the application can work at all: room on the disks, a library of a size that it can handle and
/// that can be reached, a media folder to be trusted. Main thread.
class LaunchChecks {
 public:
  explicit LaunchChecks(AppState &appState) : state(appState) {}
  LaunchChecks(const LaunchChecks &) = delete;
  ~LaunchChecks();

  /// Tells the user if there is no music application at all.
  void checkForPresenceOfiTunes();
  /// True if the boot volume or the media's volume has less than 500 MiB free and the user was warned; the
  /// application may then be ending. A volume that says 0 has not told.
  bool warnIfLowOnScratchSpace();
  /// Warns of a library of 300,000 tracks or more, unless the user wants no such warning.
  void warnAboutTrackCount(qsizetype tracks);
  /// True if there is no library to load, the user was told, and the caller must stop: the load is begun
  /// again from here, or the application ends.
  [[nodiscard]] bool warnIfLibraryInaccessible();
  /// Has the user look at the media folder a second from now, if nothing but the tracks' own places tells
  /// where it is and these lie in no usual folder.
  void checkMediaFolder();
  /// Asks the user about the media folder.
  void showUntrustedMediaFolderAlert();

 private:
  bool isReachable() const;
  static void later(MainLoop::TimerID &timer, double seconds, MainLoop::Task task);

  AppState &state;
  /// The load that is tried again, and the question about the media folder: both may be due at a launch.
  MainLoop::TimerID loadTimer = 0;
  MainLoop::TimerID folderTimer = 0;
};
