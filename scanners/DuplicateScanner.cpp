#include "scanners/DuplicateScanner.h"

#include <QFile>

#include "app/state/AppState.h"
#include "bridge/LocalizedMessage.h"
#include "platform/Platform.h"
#include "scanners/DuplicateFinder.h"
#include "support/BMLog.h"
#include "support/Copy.h"
#include "values/Keys.h"

namespace {

/// Writes how far the scan is, at most once in five minutes.
class ProgressLog {
 public:
  explicit ProgressLog(quint64 tracks) : count(tracks), next(now() + kSeconds) {}

  void tell(quint32 index) {
    const double present = now();
    if (present <= next) return;
    BMLog("scanLibraryForDuplicate... %d%% [%u/%llu]", int(quint64(index) * 100 / count), index, count);
    next = present + kSeconds;
  }

 private:
  static constexpr double kSeconds = 300.0;
  static double now() { return platform().clock->now().seconds; }

  quint64 count;
  double next;
};

/// What the exception being handled says of itself.
QString currentExceptionText() {
  try {
    throw;
  } catch (const std::exception &exception) {
    return QString::fromUtf8(exception.what());
  } catch (...) {
    return QStringLiteral("unknown exception");
  }
}

std::vector<Dictionary> guardedGroupOf(DuplicateFinder &finder, const Array &tracks, quint32 seed) {
  try {
    return finder.groupOf(seed);
  } catch (...) {
    BMLog("EXCEPTION duplicates %@ for %@", currentExceptionText(), tracks.at(seed));
  }
  return {};
}

}  // namespace

DuplicateScanner::DuplicateScanner(AppState &appState)
    : state(appState), fileExists([](const QString &path) { return QFile::exists(path); }) {}

void DuplicateScanner::scanLibraryForDuplicatesThread() {
  try {
    scan();
  } catch (...) {
    // Not one seed but the scan itself failed, for lack of memory: a short list must not look complete.
    const QString what = currentExceptionText();
    BMLog("!!! scanLibraryForDuplicatesThread ended by %@", what);
    state.operation.setCancelOperationReason(localizedMessage(QStringLiteral("ScanFailedMessage"), what));
  }
  state.operation.mCompletedOperation = true;
}

Array DuplicateScanner::copyOfTracks() {
  const Array shared = state.library.mMusicLibrarySortedTracks;
  const ObjectLock lock = state.threadLockForObject(shared);
  if (!lock) return Array::make();
  std::lock_guard held(*lock);
  const Array tracks = copyDeep(shared);
  state.operation.mNumberOfComparisons += double(float(tracks.size()) / 1000.0F);
  return tracks;
}

void DuplicateScanner::scan() {
  OperationState &operation = state.operation;
  const Array found = state.lists.mDuplicateSongDicts;
  const Array tracks = copyOfTracks();
  const auto count = quint32(tracks.size());
  const DuplicateSettings settings = DuplicateSettings::fromPreferences();
  settings.log();
  ProgressLog progress(count);
  DuplicateFinder finder(tracks, settings, fileExists, ignoredDuplicatesForPID,
                         operation.mNumberOfScannedPaths, operation.mCancelOperation);
  qint32 group = 1;
  while (operation.mNumberOfScannedPaths < count && !operation.mCancelOperation) {
    const quint32 seed = operation.mNumberOfScannedPaths;
    progress.tell(seed);
    const std::vector<Dictionary> rows = guardedGroupOf(finder, tracks, seed);
    operation.mNumberOfComparisons += (count - seed - 1) / 1000.0;
    if (!rows.empty()) appendGroup(rows, group++, found);
    ++operation.mNumberOfScannedPaths;
  }
  const bool stopped = operation.mCancelOperation && operation.mNumberOfScannedPaths < count;
  BMLog(stopped ? "CANCELLED scanLibraryForDuplicatesThread" : "Completed scanLibraryForDuplicatesThread");
}

void DuplicateScanner::appendGroup(const std::vector<Dictionary> &rows, qint32 group, const Array &list) {
  const ObjectLock lock = state.threadLockForObject(list);
  for (const Dictionary &row : rows) {
    row.set(keys::DupeGroup, group);
    std::lock_guard held(*lock);
    list.append(row);
  }
}
