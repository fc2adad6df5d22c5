#include "keeper/server/MusicKeeper.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>

#include "keeper/library/KeeperApplication.h"
#include "keeper/library/LibraryExport.h"
#include "keeper/library/LibrarySource.h"
#include "keeper/library/StoreLog.h"
#include "keeper/library/TrackTable.h"
#include "keeper/script/Interpreter.h"
#include "keeper/server/FirstImport.h"
#include "keeper/server/ImportJob.h"
#include "keeper/server/LibraryNotes.h"
#include "platform/Platform.h"
#include "platform/keeper/KeeperSettings.h"
#include "platform/keeper/StoreSchema.h"
#include "support/BMLog.h"

using namespace keeperProtocol;

namespace {

const QString kClosed = QStringLiteral("The library cannot be opened.");

/// A file that has not changed for two days passes for the library of a past time.
void touch(const QString &path) {
  ::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), nullptr, 0);
}

ScriptOutcome refused(const QString &message) {
  return failed(kHandlerFailed, message);
}

/// True if the user wants the XML beside the store, and it is not that of the last change.
bool needsExport(LibraryStore &store) {
  return KeeperSettings::read().exportXML && !libraryNotes::isUntouched(store) &&
         !LibraryExport(store).isCurrent();
}

void exportIfNeeded(LibraryStore &store) {
  try {
    // What goes wrong with the file is in the log already.
    if (needsExport(store)) (void)LibraryExport(store).run();
  } catch (const StoreError &error) {
    BMLog("!! the library is not exported: %@", error.message);
  }
}

}  // namespace

MusicKeeper::MusicKeeper(Setup given) : setup(std::move(given)) {
  board.write([this](Status &status) {
    status.version = platform().bundle.shortVersion;
    status.folder = setup.folder;
    status.processID = ::getpid();
    status.importing.emplace();
  });
}

MusicKeeper::~MusicKeeper() = default;

QString MusicKeeper::open() {
  const QString problem = openLibrary();
  // One that cannot be opened is not to pass for an empty library while the program ends.
  if (problem.isEmpty() && !isImporting()) board.write([](Status &status) { status.importing.reset(); });
  return problem;
}

QString MusicKeeper::openLibrary() {
  const bool isNew = !LibraryStore::existsIn(setup.folder);
  const QString problem = openStore(LibraryStore::Access::ReadWrite);
  if (!problem.isEmpty()) return problem;
  touch(store.path());
  lateExport = std::make_unique<LateExport>(setup.exportQuiet, setup.exportLatest, [this] { exportLate(); });
  try {
    ImportRequest import = setup.import;
    if (isNew) libraryNotes::setUntouched(store);
    if (isNew && import.file.isEmpty()) libraryNotes::setWaitingFile(store, newestLibraryFile());
    // A first import that was killed begins again.
    if (import.file.isEmpty() && store.tracks().count() == 0) import.file = libraryNotes::waitingFile(store);
    if (!import.file.isEmpty() && setup.waitsForImport) {
      opening = importFile(import);
    } else if (!import.file.isEmpty()) {
      const QString readProblem = openStore(LibraryStore::Access::ReadOnly);
      if (!readProblem.isEmpty()) return readProblem;
      firstImport = std::make_unique<FirstImport>(setup.folder, import, board);
    }
    noteState();
  } catch (const StoreError &error) {
    return error.message;
  }
  return {};
}

QString MusicKeeper::openStore(LibraryStore::Access access) {
  endScripts();
  const QString problem = store.open(setup.folder, access);
  if (!problem.isEmpty()) return problem;
  // What is done once is told without the gate of the answers.
  if (!setup.waitsForImport && access == LibraryStore::Access::ReadWrite) store.deferDisk();
  KeeperHooks hooks;
  hooks.settings = KeeperSettings::read;
  hooks.exportLibrary = [this] { return exportSoon(); };
  hooks.quit = [this] { quits = true; };
  application = std::make_unique<KeeperApplication>(store, hooks);
  const std::lock_guard guard(replacing);
  interpreter = std::make_unique<Interpreter>(*application);
  if (interrupted) interpreter->stop();
  return {};
}

void MusicKeeper::endScripts() {
  const std::lock_guard guard(replacing);
  interpreter.reset();
  application.reset();
}

void MusicKeeper::interrupt() {
  const std::lock_guard guard(replacing);
  interrupted = true;
  if (interpreter) interpreter->stop();
}

bool MusicKeeper::hasUnsecured() {
  committed = store.commitCount();
  return committed != secured;
}

QString MusicKeeper::secure() {
  const quint64 made = committed;
  const QString problem = storeLog::flush(setup.folder + u'/' + storeSchema::kFileName);
  if (problem.isEmpty()) secured = made;
  return problem;
}

ScriptOutcome MusicKeeper::run(const QString &source) {
  takeOverFirstImport();
  if (!interpreter) return refused(kClosed);
  const ScriptOutcome outcome = interpreter->run(source);
  noteState();
  return outcome;
}

void MusicKeeper::takeOverFirstImport() {
  if (!firstImport || !firstImport->hasEnded()) return;
  opening = firstImport->outcome();
  firstImport.reset();
  const QString problem = openStore(LibraryStore::Access::ReadWrite);
  if (!problem.isEmpty()) BMLog("!!! %@", problem);
}

void MusicKeeper::noteState() {
  const ScriptValue state = application->property(QStringLiteral("player state"));
  const bool plays = state.is(ScriptValue::Type::Constant) && state.term() == u"playing";
  const qint64 stamp = store.changeStamp();
  if (stamp == seenStamp && plays == board.read().playing) return;
  board.write([&](Status &status) {
    status.playing = plays;
    if (!isImporting()) status.tracks = store.tracks().count();
  });
  if (stamp != std::exchange(seenStamp, stamp) && !isImporting()) lateExport->noteChange();
}

ScriptOutcome MusicKeeper::importFile(const ImportRequest &request) {
  takeOverFirstImport();
  if (!interpreter) return refused(kClosed);
  if (isImporting()) return refused(QStringLiteral("Another import is under way."));
  board.showImport({0, 0, request.file});
  const ScriptOutcome outcome = importJob::run(store, request, [&](const ImportProgress &progress) {
    board.showImport({progress.done, progress.total, request.file});
    return !interrupted;
  });
  board.write([&](Status &status) {
    status.importing.reset();
    if (!outcome.failure) status.importProblem.clear();
  });
  noteState();
  return outcome;
}

ScriptOutcome MusicKeeper::exportFile(const ExportRequest &request) {
  takeOverFirstImport();
  if (!interpreter) return refused(kClosed);
  if (isImporting()) return refused(QStringLiteral("An import is under way."));
  const std::lock_guard guard(exporting);
  const QString problem = LibraryExport(store).run(request.file);
  if (!problem.isEmpty()) return refused(problem);
  return {ScriptDescriptor::ofText(
              QStringLiteral("Exported %1 tracks to %2").arg(store.tracks().count()).arg(request.file)),
          std::nullopt};
}

QString MusicKeeper::exportSoon() {
  touch(store.path());
  try {
    // One that runs may have seen all changes or not: that behind it looks.
    if (!isImporting() && needsExport(store)) lateExport->startNow();
    return {};
  } catch (const StoreError &error) {
    return error.message;
  }
}

void MusicKeeper::exportLate() {
  const std::lock_guard guard(exporting);
  // A store of this thread's own: scripts go on meanwhile.
  LibraryStore own;
  const QString problem = own.open(setup.folder);
  if (problem.isEmpty()) return exportIfNeeded(own);
  BMLog("!! the library is not exported: %@", problem);
}

void MusicKeeper::close() {
  lateExport.reset();
  const bool wasImporting = isImporting();
  firstImport.reset();
  if (application && !wasImporting) exportIfNeeded(store);
  endScripts();
  store.close();
}
