#pragma once

#include "keeper/library/KeeperContext.h"
#include "keeper/script/ScriptObject.h"

/// What plays, in which order, and the commands for it. What has played to its end is followed by the next
/// entry of its playlist when somebody asks; play counts stay as they are, since nobody may have listened.
class PlayCommands {
 public:
  explicit PlayCommands(KeeperContext &context_) : context(context_) {}

  /// Catches up with the time that has passed. Called before anything is asked or told.
  void update();

  /// `play [TRACK|PLAYLIST|FILE]`; without anything it goes on, or begins the library. A file that the
  /// library does not know plays without becoming a track. With `once` nothing follows what plays. -43 if the
  /// file is gone.
  ScriptValue play(const ScriptCommand &command);
  void pause() { context.player.pause(); }
  void playPause();
  void stop() { context.player.stop(); }
  void next() { step(1); }
  /// The one before, or the first.
  void previous() { step(-1); }
  /// To the beginning; in the first seconds of a track, to the one before.
  void back();

  /// "stopped", "playing", "paused"
  QString state() const;
  /// Throw -1728 when nothing of the library plays.
  ScriptValue currentTrack() const;
  ScriptValue currentPlaylist() const;

  /// Properties of the application.
  bool shuffles = false;
  /// "off", "one", "all"
  QString repeats = QStringLiteral("off");

 private:
  void start(TrackRow track, PlaylistRow playlist, qint64 position);
  void startAt(PlaylistRow playlist, qsizetype index);
  void step(int by);
  /// The index to go to from the current one; nothing at the end.
  std::optional<qsizetype> indexAfter(qsizetype index, qsizetype count, int by) const;
  std::optional<qsizetype> currentIndex() const;
  qsizetype countOf(PlaylistRow playlist) const;

  KeeperContext &context;
  /// True if what plays is to be the last.
  bool onlyOnce = false;
};
