#include "scanners/DuplicateScanner.h"

#include <QFile>

#include "app/state/AppState.h"
#include "scanners/DuplicateFinder.h"
#include "scanners/ScanProgressLog.h"
#include "scanners/ScanThread.h"
#include "values/Keys.h"

namespace {

const QString kName = QStringLiteral("scanLibraryForDuplicatesThread");

}  // namespace

DuplicateScanner::DuplicateScanner(AppState &appState)
    : state(appState), fileExists([](const QString &path) { return QFile::exists(path); }) {}

void DuplicateScanner::scanLibraryForDuplicatesThread() {
  scanThread::run(state, kName, state.operation.mCompletedOperation, [this] { scan(); });
}

void DuplicateScanner::scan() {
  OperationState &operation = state.operation;
  const Array found = state.lists.mDuplicateSongDicts;
  const Array tracks = scanThread::copyOfTracks(state);
  const auto count = quint32(tracks.size());
  const DuplicateSettings settings = DuplicateSettings::fromPreferences();
  settings.log();
  ScanProgressLog progress(QStringLiteral("scanLibraryForDuplicate"), count);
  DuplicateFinder finder(tracks, settings, fileExists, ignoredDuplicatesForPID,
                         operation.mNumberOfScannedPaths, operation.mCancelOperation);
  qint32 group = 1;
  while (operation.mNumberOfScannedPaths < count && !operation.mCancelOperation) {
    const quint32 seed = operation.mNumberOfScannedPaths;
    progress.tell(seed);
    std::vector<Dictionary> rows;
    scanThread::guarded(QStringLiteral("duplicates"), tracks.at(seed), [&] { rows = finder.groupOf(seed); });
    operation.mNumberOfComparisons += (count - seed - 1) / 1000.0;
    if (!rows.empty()) appendGroup(rows, group++, found);
    ++operation.mNumberOfScannedPaths;
  }
  scanThread::logEnd(kName, operation.mCancelOperation && operation.mNumberOfScannedPaths < count);
}

void DuplicateScanner::appendGroup(const std::vector<Dictionary> &rows, qint32 group, const Array &list) {
  const ObjectLock lock = state.threadLockForObject(list);
  for (const Dictionary &row : rows) {
    row.set(keys::DupeGroup, group);
    std::lock_guard held(*lock);
    list.append(row);
  }
}
