#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "repairs/PlaylistLengths.h"
#include "values/Value.h"

struct AppState;
class ProgressSheet;

/// Puts a new track into the places that old tracks have in the user's playlists, and finds out which
/// playlists are too long for that.
class PlaylistRepair {
 public:
  /// The user is warned of a playlist of more tracks.
  static constexpr qint32 kWarnTracks = 750;
  static constexpr qint32 kHugeTracks = PlaylistLengths::kHugeTracks;

  /// Both outlive it.
  PlaylistRepair(AppState &appState, ProgressSheet &progressSheet)
      : state(appState), lengths(appState, progressSheet) {}
  PlaylistRepair(const PlaylistRepair &) = delete;

  /// The tracks as lines for an alert; from 15 tracks on ten of them, and how many are left out.
  static QString summaryOfTrackDicts(const Array &tracks);

  /// False if nobody can tell which playlists hold a track: the library cannot be read directly, or scripts
  /// have hung so that it is left alone. A replacement then passes for done with no playlist touched, so who
  /// is about to remove tracks asks first. May wait as direct access does. Any thread.
  bool canFindPlaylists() const;

  /// Has the new track take the old ones' places in all the user's playlists; a huge one gets it at its end.
  /// Nothing, or the word of the last playlist: a text that begins with "broken:" or "error:" is a failure.
  /// Ends between two steps once the operation is cancelled: a playlist is then whole, old or new, but its
  /// temporary copy stays. May run for minutes; a repair's thread.
  std::optional<QString> doPlaylistReplaceOfSongPIDsWithSongPID(const QStringList &oldPIDs,
                                                                const QString &newPID);
  /// What a replacement has done, playlist by playlist, in the order in which it was done.
  struct Replaced {
    struct Playlist {
      QString pid, name;
    };
    struct Failure {
      Playlist playlist;
      /// A text that begins with "broken:" or "error:".
      QString reason;
    };
    /// Have the new track in the old ones' places.
    std::vector<Playlist> rebuilt;
    /// Have the new track at their end, and hold the old ones still.
    std::vector<Playlist> appended;
    /// Could not be changed; the returned text tells of the last playlist alone.
    std::vector<Failure> failed;
    /// False if nobody could tell which playlists hold the old tracks, so that none was touched.
    bool wereFound = true;
  };
  /// Of the replacement that was begun last. On the thread that ran it.
  const Replaced &lastReplaced() const { return replaced; }
  /// Behind a run that was broken off: a playlist that was emptied to be filled from its copy need not hold
  /// an old track any more, so no replacement finds it. Fills such playlists. A repair's thread.
  void putBackCopies();
  /// As in `PlaylistLengths`.
  qint32 maximumUserPlaylistTracks() { return lengths.maximumUserPlaylistTracks(); }
  QHash<QString, QString> hugePlaylistInfoUsingApplescript(bool usingScripts) {
    return lengths.hugePlaylistInfoUsingApplescript(usingScripts);
  }
  /// What a "broken:" text tells: `playlists`, `tracks` and `tracksummaries`, the last two only if a track of
  /// the library is named; null for any other text. Main thread.
  Dictionary playListReplaceErrorDictionaryFromString(const QString &result) const;

 private:
  struct Replacement {
    QStringList oldPIDs;
    QString newPID;
    /// The playlists that are not built anew.
    QSet<QString> huge;
    bool noneIsRebuilt = false;
  };
  bool isCancelled() const;
  /// How often in a row the program was started again without getting on, because a script had hung.
  qint32 restartsAfterHangs() const;
  bool isDirectAccessDistrusted() const { return restartsAfterHangs() > 0; }
  using Playlist = Replaced::Playlist;
  /// The playlists to work on, or an "error:" text.
  std::vector<Playlist> findPlaylists(const QStringList &oldPIDs, QString *error);
  std::optional<QString> appendTo(const Playlist &playlist, const Replacement &replacement);
  /// False if the answer ends the whole replacement.
  bool rebuild(const Playlist &playlist, const Replacement &replacement, std::optional<QString> *answer);

  AppState &state;
  PlaylistLengths lengths;
  Replaced replaced;
};
