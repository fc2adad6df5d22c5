#include "repairs/PlaylistRepair.h"

#include <algorithm>
#include <vector>

#include "app/state/AppState.h"
#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "repairs/MergeReasons.h"
#include "repairs/UserPlaylists.h"
#include "support/BMLog.h"
#include "support/Preferences.h"
#include "text/Whitespace.h"
#include "values/Keys.h"

namespace {

const QString kUnknownError = QStringLiteral("error: unknown");
/// Words of the rebuilding handler: the playlist held no old track, or was changed and holds one again.
const QString kNothingToReplace = QStringLiteral("Done, nothing to replace");
const QString kPutBack = QStringLiteral("put back");

QString summaryOfTrack(const Dictionary &track) {
  constexpr int kLongest = 45;
  const QString artist = trimmedOfWhitespace(track.value(keys::Artist).toText());
  const QString name = trimmedOfWhitespace(track.value(keys::Name).toText());
  QString summary = artist.isEmpty() ? name : artist;
  if (!artist.isEmpty() && !name.isEmpty()) summary = formatText(QStringLiteral("\n%@: %@"), {artist, name});
  if (summary.isEmpty()) summary = localizedMessage(QStringLiteral("Unknown"));
  return summary.size() > kLongest ? summary.left(kLongest) + QStringLiteral("...") : summary;
}

/// The user's playlists that hold one of the tracks, each once, those of the first track first, in the
/// library's order. Nothing if the library cannot be read.
std::optional<std::vector<PlaylistRepair::Replaced::Playlist>> playlistsWithSongPIDs(
    const QStringList &pids) {
  std::vector<PlaylistRepair::Replaced::Playlist> found;
  QSet<QString> known;
  for (const QString &pid : pids) {
    const auto survey = iTunesInterface::
        playlistInfoWithMinCountContainingTrackPIDIgnorePlaylistNamesIgnorePlaylistNamesPrefixedWith(
            1, pid, UserPlaylists::ownNames(), {UserPlaylists::tempPlaylistPrefix()});
    if (!survey) return std::nullopt;
    for (const PlaylistSurvey::Playlist &playlist : survey->playlists) {
      if (!playlist.containsTrack || playlist.pid.isEmpty() || known.contains(playlist.pid)) continue;
      known.insert(playlist.pid);
      found.push_back({playlist.pid, playlist.name});
    }
  }
  return found;
}

}  // namespace

QString PlaylistRepair::summaryOfTrackDicts(const Array &tracks) {
  constexpr qsizetype kAllBelow = 15, kSome = 10;
  const qsizetype shown = tracks.size() < kAllBelow ? tracks.size() : kSome;
  QString summary;
  for (qsizetype i = 0; i < shown; ++i) summary += summaryOfTrack(tracks.at(i).toDictionary());
  if (tracks.size() > shown)
    summary += localizedMessage(QStringLiteral("OverflowCount"), tracks.size() - shown);
  return summary;
}

bool PlaylistRepair::isCancelled() const {
  return state.operation.mCancelOperation;
}

qint32 PlaylistRepair::restartsAfterHangs() const {
  return state.merge.mScriptLockedBeforeRestart ? state.merge.mNumberOfNoProgressRestarts.load() : 0;
}

bool PlaylistRepair::canFindPlaylists() const {
  return !isDirectAccessDistrusted() && iTunesInterface::haveDirectLibraryAccess();
}

std::vector<PlaylistRepair::Playlist> PlaylistRepair::findPlaylists(const QStringList &oldPIDs,
                                                                    QString *error) {
  const auto direct = playlistsWithSongPIDs(oldPIDs);
  if (!direct) {
    if (!isDirectAccessDistrusted()) BMLog(" ... doPlaylistReplace fallback to AppleScript");
    BMLog(" ... doPlaylistReplace fallback to XML because AppleScript '%@'", kUnknownError);
  } else if (!isDirectAccessDistrusted()) {
    return *direct;
  }
  // The library's file names no playlist for a track: where it serves, none is found.
  if (state.changes.updateJustPlaylists()) {
    replaced.wereFound = false;
    return {};
  }
  if (direct) return *direct;
  BMLog("*** cannot get playlists from XML either, must give up.");
  *error = kUnknownError;
  return {};
}

std::optional<QString> PlaylistRepair::doPlaylistReplaceOfSongPIDsWithSongPID(const QStringList &oldPIDs,
                                                                              const QString &newPID) {
  constexpr qint32 kHangsForQuickCheck = 2, kHangsForNoRebuild = 3;
  replaced = {};
  QString error;
  const std::vector<Playlist> found = findPlaylists(oldPIDs, &error);
  if (!error.isEmpty()) return error;
  if (isCancelled()) {
    BMLog("doPlaylistReplace 2 cancelling");
    return std::nullopt;
  }
  const QHash<QString, QString> huge =
      hugePlaylistInfoUsingApplescript(restartsAfterHangs() < kHangsForQuickCheck);
  const Replacement replacement{oldPIDs, newPID, QSet<QString>(huge.keyBegin(), huge.keyEnd()),
                                restartsAfterHangs() >= kHangsForNoRebuild};
  std::optional<QString> answer;
  for (const Playlist &playlist : found) {
    if (replacement.noneIsRebuilt || replacement.huge.contains(playlist.pid)) {
      answer = appendTo(playlist, replacement);
    } else if (!rebuild(playlist, replacement, &answer)) {
      break;
    }
  }
  return answer;
}

void PlaylistRepair::putBackCopies() {
  // As the handler names a copy that is whole; others are gone on with.
  const QString suffix = QStringLiteral("-swap");
  const Array playlists = state.changes.playlists();
  bool any = false;
  for (const Value &playlist : playlists) {
    const QString name = playlist.toDictionary().value(keys::Name).toText();
    if (!name.startsWith(UserPlaylists::tempPlaylistPrefix()) || !name.endsWith(suffix)) continue;
    BMLog("a playlist is put back from its copy %@", name);
    iTunesInterface::removePlaylistsWithNamesStartingWith(name);
    any = true;
  }
  // What was known of the playlists has no entries of the old tracks there.
  if (any && !state.changes.updateJustPlaylists()) state.changes.forgetPlaylists();
}

std::optional<QString> PlaylistRepair::appendTo(const Playlist &playlist, const Replacement &replacement) {
  const std::optional<QString> answer =
      prefs::isTrue(prefs::reportMinorErrors)
          ? QStringLiteral("error: cannot replace instances of song in playlist")
          : iTunesInterface::addTrackWithPIDToPlaylistWithPID(replacement.newPID, playlist.pid);
  if (!answer || mergeReasons::isFailure(*answer))
    replaced.failed.push_back({playlist, answer.value_or(kUnknownError)});
  else
    replaced.appended.push_back(playlist);
  return answer;
}

bool PlaylistRepair::rebuild(const Playlist &playlist, const Replacement &replacement,
                             std::optional<QString> *answer) {
  const QString temporaryName =
      formatText(QStringLiteral("%@-%@"), {UserPlaylists::tempPlaylistPrefix(), playlist.pid});
  bool isChanged = false, mayBeChanged = false;
  while (!isCancelled()) {
    *answer = iTunesInterface::incrementalRebuildPlaylist(playlist.pid, replacement.oldPIDs,
                                                          replacement.newPID, temporaryName);
    if (!*answer && !isCancelled()) *answer = kUnknownError;
    state.health.setiTunesResponsive(true);
    const QString text = answer->value_or(QString());
    if (mergeReasons::isFailure(text) && !text.contains(mergeReasons::kTimedOut)) {
      iTunesInterface::removePlaylistsWithNamesStartingWith(UserPlaylists::tempPlaylistPrefix());
      replaced.failed.push_back({playlist, text});
      return false;
    }
    isChanged |= text == kPutBack;
    // A step that nobody saw the end of may have been the one that did it.
    mayBeChanged |= mergeReasons::isFailure(text);
    if (!text.startsWith(QStringLiteral("Done"))) continue;
    BMLog("Finished rebuild of playlist PID was:%@ %@", playlist.pid, text);
    isChanged |= mayBeChanged || text != kNothingToReplace;
    break;
  }
  if (isChanged) replaced.rebuilt.push_back(playlist);
  return true;
}

Dictionary PlaylistRepair::playListReplaceErrorDictionaryFromString(const QString &result) const {
  if (!result.startsWith(mergeReasons::kBroken)) return {};
  const QStringList fields = result.split(QStringLiteral("|@"));
  if (fields.size() < 3) return {};
  const Dictionary told = Dictionary::make();
  const Array names = Array::make(), tracks = Array::make(), summaries = Array::make();
  names.append(fields[1]);
  told.set(keys::playlists, names);
  const Array sorted = state.library.mMusicLibrarySortedTracks;
  for (const QString &pid : fields.mid(2)) {
    for (qsizetype i = sorted.size() - 1; i >= 0; --i) {
      const Dictionary &track = sorted.at(i).toDictionary();
      if (track.value(keys::PersistentID).toText() != pid) continue;
      tracks.append(track);
      summaries.append(formatText(QStringLiteral("%@: %@"),
                                  {track.value(keys::Artist).toText(), track.value(keys::Name).toText()}));
    }
  }
  if (!tracks.isEmpty()) told.set(keys::tracks, tracks);
  if (!summaries.isEmpty()) told.set(keys::tracksummaries, summaries);
  return told;
}
