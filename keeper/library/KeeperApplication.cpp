#include "keeper/library/KeeperApplication.h"

#include "keeper/library/CommandThings.h"
#include "keeper/library/LibraryCommands.h"
#include "keeper/library/MusicDictionary.h"
#include "keeper/library/PlaylistElements.h"
#include "keeper/library/PlaylistObject.h"
#include "keeper/library/Refusal.h"
#include "keeper/library/SourceObject.h"
#include "platform/KeeperIdentity.h"
#include "platform/Platform.h"

namespace {

bool requiredFlag(const QString &term, const ScriptValue &value) {
  const std::optional<bool> flag = flagOfValue(value);
  if (!flag) throw refusal::unfit(term);
  return *flag;
}

double requiredNumber(const QString &term, const ScriptValue &value) {
  const std::optional<double> number = realOfValue(value);
  if (!number) throw refusal::unfit(term);
  return *number;
}

}  // namespace

KeeperApplication::KeeperApplication(LibraryStore &store, KeeperHooks hooks)
    : context(store, std::move(hooks)), playing(context) {}

const ScriptDictionary &KeeperApplication::dictionary() const {
  return musicDictionary();
}

bool KeeperApplication::answersTo(const QString &nameOrIdentifier) const {
  return nameOrIdentifier.compare(keeperIdentity::kName, Qt::CaseInsensitive) == 0 ||
         nameOrIdentifier.compare(keeperIdentity::kIdentifier, Qt::CaseInsensitive) == 0;
}

ScriptValue KeeperApplication::property(const QString &term) {
  return withStoreErrors([&]() -> ScriptValue {
    if (term == u"name") return keeperIdentity::kName;
    if (term == u"id") return keeperIdentity::kIdentifier;
    if (term == u"version") return platform().bundle.shortVersion;
    if (term == u"class") return ScriptClassName{className()};
    if (term == u"selection") return ScriptValue::list();
    if (term == u"fixed indexing") return hasFixedIndexing;
    if (term == u"frontmost" || term == u"converting" || term == u"full screen" ||
        term == u"visuals enabled" || term == u"eq enabled") {
      return false;
    }
    return playProperty(term);
  });
}

ScriptValue KeeperApplication::playProperty(const QString &term) {
  playing.update();
  if (term == u"player state") return ScriptConstant{playing.state()};
  if (term == u"player position") return context.player.position();
  if (term == u"current track") return playing.currentTrack();
  if (term == u"current playlist") return playing.currentPlaylist();
  if (term == u"current stream title" || term == u"current stream url") return ScriptValue::missing();
  if (term == u"sound volume") return context.player.volume();
  if (term == u"mute") return context.player.isMuted();
  if (term == u"shuffle enabled") return playing.shuffles;
  if (term == u"shuffle mode") return ScriptConstant{u"songs"_qs};
  if (term == u"song repeat") return ScriptConstant{playing.repeats};
  throw refusal::cannotGet(term + u" of application \"Music Keeper\""_qs);
}

void KeeperApplication::setProperty(const QString &term, const ScriptValue &value) {
  withStoreErrors([&] {
    if (term == u"fixed indexing") {
      hasFixedIndexing = requiredFlag(term, value);
    } else if (term == u"frontmost") {
      requiredFlag(term, value);
    } else if (!setPlayProperty(term, value)) {
      // What is stopped has no current track to read, but the property is there.
      if (term != u"current track" && term != u"current playlist") property(term);
      throw refusal::readOnly(term);
    }
  });
}

bool KeeperApplication::setPlayProperty(const QString &term, const ScriptValue &value) {
  playing.update();
  if (term == u"player position") {
    context.player.setPosition(requiredNumber(term, value));
  } else if (term == u"sound volume") {
    context.player.setVolume(int(std::clamp(requiredNumber(term, value), 0.0, 100.0)));
  } else if (term == u"mute") {
    context.player.setMuted(requiredFlag(term, value));
  } else if (term == u"shuffle enabled") {
    playing.shuffles = requiredFlag(term, value);
  } else if (term == u"song repeat") {
    const QString mode = value.is(ScriptValue::Type::Constant) ? value.term() : QString();
    if (mode != u"off" && mode != u"one" && mode != u"all") throw refusal::unfit(term);
    playing.repeats = mode;
  } else {
    return false;
  }
  return true;
}

ScriptObjectPtr KeeperApplication::holderOf(const QString &className) {
  if (playlistElements::isPlaylistClass(className)) return std::make_shared<SourceObject>(context);
  if (musicDictionary().isKindOf(className, u"track"_qs)) {
    return std::make_shared<PlaylistObject>(context, context.store.playlists().master());
  }
  throw refusal::cannotGet(u"every %1 of application \"Music Keeper\""_qs.arg(className));
}

qsizetype KeeperApplication::elementCount(const QString &className) {
  if (className == u"source") return 1;
  return withStoreErrors([&] { return holderOf(className)->elementCount(className); });
}

ScriptObjects KeeperApplication::elements(const QString &className) {
  if (className == u"source") return {std::make_shared<SourceObject>(context)};
  return withStoreErrors([&] { return holderOf(className)->elements(className); });
}

ScriptObjectPtr KeeperApplication::elementAt(const QString &className, qsizetype index) {
  if (className == u"source") {
    return index == 0 ? std::make_shared<SourceObject>(context) : ScriptObjectPtr();
  }
  return withStoreErrors([&] { return holderOf(className)->elementAt(className, index); });
}

std::optional<ScriptObjects> KeeperApplication::elementsWhere(const QString &className,
                                                              const QString &property,
                                                              const ScriptValue &value) {
  if (className == u"source") return {};
  return withStoreErrors([&] { return holderOf(className)->elementsWhere(className, property, value); });
}

std::optional<ScriptListItems> KeeperApplication::column(const QString &className, const QString &property) {
  if (className == u"source") return {};
  return withStoreErrors([&] { return holderOf(className)->column(className, property); });
}

ScriptValue KeeperApplication::perform(const ScriptCommand &command) {
  return withStoreErrors([&] {
    playing.update();
    return dispatch(command);
  });
}

ScriptValue KeeperApplication::dispatch(const ScriptCommand &command) {
  const QString &verb = command.verb;
  if (verb == u"add") return libraryCommands::add(context, command);
  if (verb == u"delete") return libraryCommands::remove(context, command);
  if (verb == u"duplicate") return libraryCommands::duplicate(context, command);
  if (verb == u"move") return libraryCommands::move(context, command);
  if (verb == u"make") return libraryCommands::make(context, command);
  if (verb == u"refresh") return libraryCommands::refresh(context, command);
  if (verb == u"search") return libraryCommands::search(context, command);
  if (verb == u"play") return playing.play(command);
  if (verb == u"save" || verb == u"export") return save();
  if (verb == u"quit") {
    if (context.hooks.quit) context.hooks.quit();
    return {};
  }
  // There is no window to show things in, or to close.
  static const QStringList withoutEffect = {u"launch"_qs, u"activate"_qs, u"run"_qs,  u"reopen"_qs,
                                            u"reveal"_qs, u"select"_qs,   u"close"_qs};
  if (withoutEffect.contains(verb) || performPlaying(command)) return {};
  throw refusal::notUnderstood(verb);
}

bool KeeperApplication::performPlaying(const ScriptCommand &command) {
  const QString &verb = command.verb;
  if (verb == u"pause") {
    playing.pause();
  } else if (verb == u"playpause") {
    playing.playPause();
  } else if (verb == u"stop") {
    playing.stop();
  } else if (verb == u"resume") {
    context.player.resume();
  } else if (verb == u"next track") {
    playing.next();
  } else if (verb == u"previous track") {
    playing.previous();
  } else if (verb == u"back track") {
    playing.back();
  } else {
    return false;
  }
  return true;
}

ScriptValue KeeperApplication::save() {
  const QString problem = context.hooks.exportLibrary ? context.hooks.exportLibrary() : QString();
  if (!problem.isEmpty()) throw refusal::error(scriptErrors::kHandlerFailed, problem);
  return {};
}
