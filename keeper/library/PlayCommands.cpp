#include "keeper/library/PlayCommands.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include "keeper/library/CommandThings.h"
#include "keeper/library/PlaylistObject.h"
#include "keeper/library/Refusal.h"
#include "keeper/library/TrackEditing.h"
#include "keeper/library/TrackObject.h"
#include "values/Keys.h"

void PlayCommands::update() {
  if (!context.player.isAtEnd()) return;
  if (onlyOnce) return context.player.stop();
  if (repeats == u"one") {
    const Player::Item item = *context.player.current();
    context.player.start(item);
  } else {
    step(1);
  }
}

ScriptValue PlayCommands::play(const ScriptCommand &command) {
  const ScriptValue &what = command.direct;
  const bool isToApplication = !command.target || dynamic_cast<ScriptApplication *>(command.target.get());
  if (what.is(ScriptValue::Type::NoValue) && isToApplication) {
    if (context.player.state() == Player::State::Stopped) {
      startAt(context.store.playlists().master(), 0);
    } else {
      context.player.resume();
    }
    return {};
  }
  const ScriptValue *once = command.parameter(u"once"_qs);
  onlyOnce = once && flagOfValue(*once).value_or(false);
  if (const std::optional<QString> path = pathOfValue(what)) {
    if (!QFileInfo(*path).isFile()) throw refusal::fileNotFound(*path);
    const TrackRows known = context.store.tracks().atPath(*path);
    if (known.empty()) {
      context.player.start({TrackRow::None, PlaylistRow::None, 0, *path, 0.0});
    } else {
      start(known.front(), context.store.playlists().master(), 0);
    }
    return {};
  }
  const ScriptObjects things = commandThings::of(command);
  if (things.size() != 1) throw refusal::notUnderstood(command.verb);
  if (const auto track = std::dynamic_pointer_cast<TrackObject>(things.front())) {
    if (!track->exists()) throw refusal::cannotGet(u"that track"_qs);
    start(track->track(), track->playlist(), track->position());
  } else if (const auto playlist = std::dynamic_pointer_cast<PlaylistObject>(things.front())) {
    playlist->info();
    startAt(playlist->playlist(), 0);
  } else {
    throw refusal::notUnderstood(command.verb);
  }
  return {};
}

void PlayCommands::start(TrackRow track, PlaylistRow playlist, qint64 position) {
  const Value seconds = context.store.tracks().value(track, keys::TotalTime);
  const QString path = trackEditing::filePath(context, track);
  if (!path.isEmpty() && !QFileInfo(path).isFile()) throw refusal::fileNotFound(path);
  context.player.start({track, playlist, position, path, double(seconds.toInteger()) / 1000.0});
}

qsizetype PlayCommands::countOf(PlaylistRow playlist) const {
  const bool isLibrary = playlist == context.store.playlists().master();
  return isLibrary ? context.store.tracks().count() : context.store.entries().count(playlist);
}

void PlayCommands::startAt(PlaylistRow playlist, qsizetype index) {
  if (index < 0 || index >= countOf(playlist)) return;
  if (playlist == context.store.playlists().master()) {
    start(context.store.tracks().at(index), playlist, 0);
  } else {
    const PlaylistEntry entry = context.store.entries().at(playlist, index);
    start(entry.track, playlist, entry.position);
  }
}

std::optional<qsizetype> PlayCommands::currentIndex() const {
  const Player::Item *item = context.player.current();
  if (!item || item->track == TrackRow::None) return {};
  if (item->playlist == context.store.playlists().master())
    return context.store.tracks().indexOf(item->track);
  return context.store.entries().indexOf(item->playlist, item->position);
}

std::optional<qsizetype> PlayCommands::indexAfter(qsizetype index, qsizetype count, int by) const {
  if (shuffles && count > 1 && by > 0) {
    const qsizetype other = qsizetype(QRandomGenerator::global()->bounded(quint64(count - 1)));
    return other < index ? other : other + 1;
  }
  if (by < 0) return std::max<qsizetype>(0, index - 1);
  if (index + 1 < count) return index + 1;
  return repeats == u"all" ? std::optional<qsizetype>(0) : std::nullopt;
}

void PlayCommands::step(int by) {
  onlyOnce = false;
  const std::optional<qsizetype> index = currentIndex();
  if (!index) return context.player.stop();
  const PlaylistRow playlist = context.player.current()->playlist;
  // Entries whose file is gone are passed over, each at most once.
  const qsizetype count = countOf(playlist);
  std::optional<qsizetype> at = *index;
  for (qsizetype tries = 0; tries < count; ++tries) {
    at = indexAfter(*at, count, by);
    if (!at) break;
    try {
      return startAt(playlist, *at);
    } catch (const ScriptError &) {
      continue;
    }
  }
  context.player.stop();
}

void PlayCommands::playPause() {
  if (context.player.state() == Player::State::Playing) return context.player.pause();
  play({});
}

void PlayCommands::back() {
  constexpr double kFirstSeconds = 3.0;
  if (context.player.position() > kFirstSeconds) return context.player.setPosition(0.0);
  previous();
}

QString PlayCommands::state() const {
  switch (context.player.state()) {
    case Player::State::Playing:
      return u"playing"_qs;
    case Player::State::Paused:
      return u"paused"_qs;
    default:
      return u"stopped"_qs;
  }
}

ScriptValue PlayCommands::currentTrack() const {
  const Player::Item *item = context.player.current();
  if (!item || item->track == TrackRow::None) throw refusal::cannotGet(u"current track"_qs);
  return ScriptObjectPtr(std::make_shared<TrackObject>(context, item->track, item->playlist, item->position));
}

ScriptValue PlayCommands::currentPlaylist() const {
  const Player::Item *item = context.player.current();
  if (!item || item->playlist == PlaylistRow::None) throw refusal::cannotGet(u"current playlist"_qs);
  return ScriptObjectPtr(std::make_shared<PlaylistObject>(context, item->playlist));
}
