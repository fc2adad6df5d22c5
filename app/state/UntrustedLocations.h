#pragma once

#include <mutex>

#include "values/Value.h"

struct AppState;

/// The tracks whose place in the library file must not be believed, because this program has moved or changed
/// their file and the file that it reads may still tell the old one. Every access takes the list's lock.
class UntrustedLocations {
 public:
  explicit UntrustedLocations(AppState &appState) : state(appState) {}

  /// The persistent IDs, mutable; loaded at first use. Whoever reads or changes it holds its
  /// `threadLockForObject` lock. Any thread.
  Array untrustedLocationPIDsArray();
  /// Stores the list; an empty one leaves no trace in the preferences. Nothing if it was never loaded.
  void writeUntrustedLocationPIDsArray();

 private:
  AppState &state;
  /// Guards the reference; the list itself has its own lock.
  std::mutex guard;
  Array mUntrustedLocationPIDsArray;
};
