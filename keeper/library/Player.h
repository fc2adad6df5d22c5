#pragma once

#include <QString>
#include <optional>

#include "keeper/library/StoreRows.h"
#include "values/Date.h"

/// What plays and where it stands, silently and by the clock. Knows nothing of what comes next. One thread.
class Player {
 public:
  enum class State { Stopped, Playing, Paused };
  struct Item {
    /// None for a file outside the library.
    TrackRow track = TrackRow::None;
    /// The playlist that it plays from, and the entry's position in it.
    PlaylistRow playlist = PlaylistRow::None;
    qint64 position = 0;
    QString path;
    /// 0 if not known.
    double seconds = 0.0;
  };

  State state() const { return now; }
  /// What plays or is paused; null when stopped.
  const Item *current() const { return now == State::Stopped ? nullptr : &item; }
  void start(const Item &item);
  void pause();
  /// Goes on after a pause; does nothing else.
  void resume();
  void stop();
  /// Seconds into the current item, never behind its end; 0 when stopped.
  double position() const;
  void setPosition(double seconds);
  /// True once the item has played to its end. Never for one whose length is not known.
  bool isAtEnd() const;

  /// 0 to 100.
  int volume() const { return loudness; }
  void setVolume(int volume);
  bool isMuted() const { return muted; }
  void setMuted(bool mute) { muted = mute; }

 private:
  double elapsed() const;

  State now = State::Stopped;
  Item item;
  /// Where it stood when it was started or went on last, and when that was.
  double base = 0.0;
  Date since;
  int loudness = 100;
  bool muted = false;
};
