#include "repairs/PlaylistLengths.h"

#include <limits>
#include <memory>
#include <mutex>
#include <optional>

#include "app/state/AppState.h"
#include "app/state/ProgressSheet.h"
#include "bridge/BridgeState.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "repairs/UserPlaylists.h"
#include "support/BMLog.h"
#include "support/RestServingThreads.h"
#include "values/Keys.h"

namespace {

double now() {
  return platform().clock->now().seconds;
}

/// What one count in the background has found. Each count has its own, so that the late word of one that hung
/// is never taken for that of the next.
class CountResult {
 public:
  void put(std::optional<QString> found) {
    const std::lock_guard held(guard);
    text = std::move(found);
  }
  std::optional<QString> take() {
    const std::lock_guard held(guard);
    return std::exchange(text, std::nullopt);
  }

 private:
  std::mutex guard;
  std::optional<QString> text;
};

std::optional<PlaylistSurvey> survey(qint64 minCount, const QStringList &ignoredNames) {
  return iTunesInterface::
      playlistInfoWithMinCountContainingTrackPIDIgnorePlaylistNamesIgnorePlaylistNamesPrefixedWith(
          minCount, QString(), ignoredNames, {UserPlaylists::tempPlaylistPrefix()});
}

std::optional<QString> maximumUserPlaylistTracksThread() {
  const iTunesInterface::IgnoredPlaylists ignored = UserPlaylists::ignoredPlaylists();
  const auto found =
      survey(0, {ignored.unkept, ignored.adopted, ignored.temporaryPrefix, ignored.converting});
  return found ? QString::number(found->maxCount) : iTunesInterface::getMaxPlaylistLength(ignored);
}

qint32 lengthOfText(const QString &text) {
  constexpr qint64 kLongest = std::numeric_limits<qint32>::max();
  return qint32(qBound(-kLongest, Value(text).toInteger(), kLongest));
}

qsizetype entriesOf(const Dictionary &playlist) {
  return playlist.value(keys::PlaylistItems).toArray().size();
}

void enterNamed(QHash<QString, QString> &found, const QString &pid, const QString &name) {
  if (!pid.isEmpty() && !name.isEmpty()) found.insert(pid, name);
}

QHash<QString, QString> hugeOf(const Array &playlists) {
  const QStringList own = UserPlaylists::ownNames();
  QHash<QString, QString> found;
  for (const Value &value : playlists) {
    const Dictionary &playlist = value.toDictionary();
    if (entriesOf(playlist) <= PlaylistLengths::kHugeTracks || !UserPlaylists::isOrdinary(playlist, own)) continue;
    enterNamed(found, playlist.value(keys::PlaylistPersistentID).toText(),
               playlist.value(keys::Name).toText().trimmed());
  }
  return found;
}

QHash<QString, QString> hugeByAsking() {
  const auto surveyed = survey(PlaylistLengths::kHugeTracks, UserPlaylists::ownNames());
  if (!surveyed) {
    BMLog(" ... hugePlaylistInfo falling back to getPlaylistNamesAndPIDsAboveLength");
    return iTunesInterface::playlistNamesAtLength(PlaylistLengths::kHugeTracks,
                                                  UserPlaylists::ignoredPlaylists());
  }
  QHash<QString, QString> found;
  for (const PlaylistSurvey::Playlist &playlist : surveyed->playlists)
    enterNamed(found, playlist.pid, playlist.name);
  return found;
}

}  // namespace

qint32 PlaylistLengths::maximumUserPlaylistTracks() {
  constexpr double kLimitSeconds = 10.0, kStepSeconds = 0.2, kSheetSeconds = 2.0;
  const auto result = std::make_shared<CountResult>();
  // It may hang with the music application, so nothing of ours is waited for or touched by it.
  bridgeState().abandoned.detach(QStringLiteral("maximumUserPlaylistTracks"),
                                 [result] { result->put(maximumUserPlaylistTracksThread()); });
  const double begin = now();
  bool sheetIsShown = false;
  std::optional<QString> text = result->take();
  while (!text && now() - begin < kLimitSeconds) {
    restServingThreads(kStepSeconds);
    text = result->take();
    if (text || sheetIsShown || now() - begin <= kSheetSeconds) continue;
    sheetIsShown = true;
    state.view.setProgressIndeterminate(true);
    sheet.displayProgressSheet();
  }
  if (text) {
    const qint32 length = lengthOfText(*text);
    BMLog("maximumUserPlaylistTracks script success = %d", length);
    if (length >= 0) return length;
  }
  BMLog("!! maximumUserPlaylistTracks script timed out");
  state.merge.mScriptLockedBeforeRestart = true;
  return maximumOfPlaylistsAtHand();
}

qint32 PlaylistLengths::maximumOfPlaylistsAtHand() {
  (void)state.changes.updateJustPlaylists();
  qsizetype longest = 0;
  const QStringList own = UserPlaylists::ownNames();
  const Array playlists = state.changes.playlists();
  for (const Value &value : playlists) {
    const Dictionary &playlist = value.toDictionary();
    if (UserPlaylists::isOrdinary(playlist, own)) longest = qMax(longest, entriesOf(playlist));
  }
  return qint32(qMin(longest, qsizetype(std::numeric_limits<qint32>::max())));
}

QHash<QString, QString> PlaylistLengths::hugePlaylistInfoUsingApplescript(bool usingScripts) {
  constexpr double kWorthTellingSeconds = 1.0;
  BMLog("begin hugePlaylistInfoUsingApplescript:%d", int(usingScripts));
  const double begin = now();
  const QHash<QString, QString> found =
      state.changes.updateJustPlaylists() ? hugeOf(state.changes.playlists()) : hugeByAsking();
  const double took = now() - begin;
  if (took > kWorthTellingSeconds) BMLog("[!] hugePlaylistInfoUsingApplescript took %.1f seconds", took);
  return found;
}
