#pragma once

#include <QString>
#include <mutex>
#include <optional>

#include "app/state/ProblemView.h"

struct AppState;

/// Keeps what is in memory in step with what the program itself changes between two loads.
class LibraryChanges {
 public:
  explicit LibraryChanges(AppState &appState) : state(appState) {}

  /// What a change of a track means to the lists.
  struct TrackChange {
    Dictionary track;
    /// The tab whose table shows the change already.
    ProblemTab tab = ProblemTab::Duplicates;
    bool isGone = false;
    /// Where the track's file was; null if nobody knows.
    QString formerPath;
  };

  /// Brings the playlists up to date: by direct access, else from a library file newer than the last change,
  /// for which it waits up to 40 seconds. False with a line in the log if they cannot be had. A worker or the
  /// main thread; one at a time.
  bool updateJustPlaylists();
  /// The playlists as they were when they were last brought up to date, or as loaded. Any thread.
  Array playlists();
  /// The playlists as they were last brought up to date; null if they were not, or were forgotten. Any thread.
  Array freshPlaylists();
  /// Forgets what was brought up to date, as it holds no longer. Any thread.
  void forgetPlaylists() { setPlaylists({}); }
  /// Notes that the library has just been changed, and that its file is older now. Any thread.
  void modifiedLibrary();

  /// Notes the change and takes rows that no longer hold off the lists of orphans and missing tracks. Any
  /// thread; returns when all is done, so a caller holds no list's lock.
  void didModifyTrackWithInfo(const TrackChange &change);
  /// A track has left the library, by a change that the current tab shows. A null one is ignored.
  void didRemoveTrackWithDict(const Dictionary &track);
  /// A track's file may stand elsewhere now: asks the music application where, notes that the library file is
  /// not to be believed about it, and goes on as for a change. Ignores a null track and one without an
  /// identifier.
  void didMoveTrackWithDict(const Dictionary &track);

 private:
  bool waitForNewerFile();
  bool readPlaylists(const QString &path, double begin);
  void setPlaylists(const Array &playlists);
  void modifyOnMainThread(const TrackChange &change);
  void moveOnMainThread(const Dictionary &track);
  std::optional<Date> lastModified();

  AppState &state;
  /// Guards `mLastLibraryModifiedDate` and `mMusicLibraryPlaylists` while workers run.
  std::recursive_mutex modifiedGuard;
};
