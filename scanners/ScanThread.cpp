#include "scanners/ScanThread.h"

#include "app/state/AppState.h"
#include "bridge/LocalizedMessage.h"
#include "support/BMLog.h"
#include "support/Copy.h"
#include "support/ExceptionText.h"

namespace scanThread {

void run(AppState &state, const QString &name, std::atomic<bool> &completed,
         const std::function<void()> &scan) {
  try {
    scan();
  } catch (...) {
    // Not one seed but the scan itself failed, for lack of memory: a short list must not look complete.
    const QString what = currentExceptionText();
    BMLog("!!! %@ ended by %@", name, what);
    state.operation.setCancelOperationReason(localizedMessage(QStringLiteral("ScanFailedMessage"), what));
  }
  completed = true;
}

Array copyOfTracks(AppState &state) {
  const Array shared = state.library.mMusicLibrarySortedTracks;
  const ObjectLock lock = state.threadLockForObject(shared);
  if (!lock) return Array::make();
  std::lock_guard held(*lock);
  const Array tracks = copyDeep(shared);
  state.operation.mNumberOfComparisons += double(float(tracks.size()) / 1000.0F);
  return tracks;
}

void logEnd(const QString &name, bool stopped) {
  BMLog(stopped ? "CANCELLED %@" : "Completed %@", name);
}

void logException(const QString &kind, const Value &seed) noexcept {
  BMLog("EXCEPTION %@ %@ for %@", kind, currentExceptionText(), seed);
}

}  // namespace scanThread
