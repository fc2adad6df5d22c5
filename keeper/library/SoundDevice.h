#pragma once

#include <QString>

/// What makes music heard. Where there is none, playing is silent. One thread.
class SoundDevice {
 public:
  virtual ~SoundDevice() = default;
  /// Plays a file from a place in it, in seconds; whatever played before is over. False if it cannot.
  virtual bool start(const QString &path, double seconds) = 0;
  /// Halts; `resume` goes on where it halted.
  virtual void pause() = 0;
  virtual void resume() = 0;
  virtual void stop() = 0;
  /// From 0 to 1.
  virtual void setVolume(double volume) = 0;
};
