#pragma once

#include "platform/Platform.h"
#include "platform/qt/OverlayPreferenceStore.h"

/// What surrounds a command that works on a library: what it sets stays out of the user's settings, except
/// the note by which a crashing parser is avoided the next time; at the end the log is closed. Main thread,
/// no worker running at its beginning and end.
class Session {
 public:
  enum class LogAtEnd { StaysText, Compressed };

  explicit Session(LogAtEnd end);
  Session(const Session &) = delete;
  ~Session();

  /// From here on what is set goes to the user's settings; what was set before is forgotten.
  void useUserSettings();

 private:
  const LogAtEnd logAtEnd;
  const Platform outer;
  OverlayPreferenceStore overlay;
};
