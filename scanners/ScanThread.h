#pragma once

#include <QString>
#include <atomic>
#include <functional>

#include "values/Value.h"

struct AppState;

/// What the bodies of the scan threads have in common. On the scan's thread.
namespace scanThread {

/// Runs a scan and sets its completion flag. If the scan itself cannot go on, the log tells so by the `name`
/// of the body and the user gets it as the reason why the operation stopped. Never throws.
void run(AppState &state, const QString &name, std::atomic<bool> &completed,
         const std::function<void()> &scan);

/// A deep copy of the sorted tracks, made under their lock and counted as work done. Empty without a library.
Array copyOfTracks(AppState &state);

/// The last line of a scan that came to its end, or was `stopped` before it.
void logEnd(const QString &name, bool stopped);

/// For `guarded`, inside its handler.
void logException(const QString &kind, const Value &seed) noexcept;

/// One seed's pass: an exception costs that pass and a line in the log.
template <class Pass>
void guarded(const QString &kind, const Value &seed, const Pass &pass) {
  try {
    pass();
  } catch (...) {
    logException(kind, seed);
  }
}

}  // namespace scanThread
