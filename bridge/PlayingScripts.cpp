#include "bridge/PlayingScripts.h"

#include "bridge/ApplicationScripts.h"
#include "bridge/MusicApplication.h"
#include "bridge/NamedScripts.h"
#include "bridge/Responsiveness.h"
#include "bridge/ScriptRunner.h"
#include "platform/Platform.h"

namespace iTunesInterface {

namespace {

void startApplicationIfNeeded() {
  constexpr double kStartSeconds = 2.0;
  if (isMusicAppRunning()) return;
  versionString();
  resetIsMusicAppRunning();
  platform().clock->sleep(kStartSeconds);
}

bool isAboveZero(const std::optional<QString> &number) {
  return number && number->toInt() > 0;
}

}  // namespace

QString pathOfCurrentlyPlayingTrack() {
  constexpr float kTimeoutSeconds = 1;
  if (!haveBridge() || !isMusicAppRunning()) return {};
  const std::optional<QString> script = scriptNamed(QStringLiteral("iTunes_play_currently_playing"));
  if (!script) return {};
  const std::optional<ScriptDescriptor> result = descFromScriptTimeoutSeconds(*script, kTimeoutSeconds);
  return result ? result->stringValue().value_or(QString()) : QString();
}

void pausePlaying() {
  if (isMusicAppRunning()) stringFromScript(QStringLiteral("tell app \"iTunes\"\rpause\rend tell"));
}

void resumePlaying() {
  if (isMusicAppRunning()) stringFromScript(QStringLiteral("tell app \"iTunes\"\rplay\rend tell"));
}

bool playTrackAtPath(const QString &path) {
  startApplicationIfNeeded();
  return isAboveZero(stringFromScriptNameAndFormat(QStringLiteral("iTunes_play_path"), path));
}

bool playTrackNamedByArtistIndexOfPlaylist(const QString &title, const QString &artist, qint32 index,
                                           const QString &playlist) {
  startApplicationIfNeeded();
  if (index != 0 && !playlist.isNull() &&
      isAboveZero(stringFromScriptNameAndFormat(QStringLiteral("iTunes_play_playlist"), playlist, title,
                                                artist, index)))
    return true;
  return isAboveZero(
      stringFromScriptNameAndFormat(QStringLiteral("iTunes_play_title_artist"), title, artist));
}

}  // namespace iTunesInterface
