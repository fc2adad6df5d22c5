#include "scanners/InconsistentNameScanner.h"

#include "app/state/AppState.h"
#include "scanners/InconNameController.h"
#include "scanners/InconsistentNameFinder.h"
#include "scanners/ScanProgressLog.h"
#include "scanners/ScanThread.h"
#include "support/BMLog.h"

namespace {

const QString kName = QStringLiteral("scanLibraryForInconsistentNamesThread");

}  // namespace

InconsistentNameScanner::InconsistentNameScanner(AppState &appState, const InconNameController &names)
    : state(appState), mInconNameController(names) {}

void InconsistentNameScanner::scanLibraryForInconsistentNamesThread() {
  scanThread::run(state, kName, state.operation.mCompletedFindInconsistentNames, [this] { scan(); });
}

void InconsistentNameScanner::scan() {
  OperationState &operation = state.operation;
  const Array found = state.lists.mInconsistentNameDicts;
  const NameKeyMethod method = NameKeyMethod::fromPreferences();
  const Array tracks = scanThread::copyOfTracks(state);
  const auto count = quint32(tracks.size());
  BMLog("%@ %d tracks", kName, count);
  ScanProgressLog progress(QStringLiteral("scanLibraryForInconsist"), count);
  InconsistentNameFinder finder(tracks, method, [&](quint32) -> bool { return operation.mCancelOperation; });
  quint32 seed = 0;
  for (; seed < count && !operation.mCancelOperation; ++seed) {
    progress.tell(seed);
    scanThread::guarded(QStringLiteral("inconsistent"), tracks.at(seed), [&] {
      for (const Dictionary &row : finder.rowsOf(seed)) {
        mInconNameController.automaticallyChoosePreferredForDictionaryComparisonSelector(row, method);
        append(row, found);
      }
    });
    operation.mNumberOfComparisons += (count - seed - 1) / 1000.0;
  }
  scanThread::logEnd(kName, operation.mCancelOperation && seed < count);
}

// The progress update reads the list under its lock.
void InconsistentNameScanner::append(const Dictionary &row, const Array &list) {
  const ObjectLock lock = state.threadLockForObject(list);
  std::lock_guard held(*lock);
  list.append(row);
}
