#include "keeper/server/FirstImport.h"

#include "keeper/library/TrackTable.h"
#include "keeper/server/ImportJob.h"
#include "support/BMLog.h"

FirstImport::FirstImport(const QString &folder, const keeperProtocol::ImportRequest &request,
                         StatusBoard &board_)
    : board(board_) {
  board.showImport({0, 0, request.file});
  thread = std::thread([this, folder, request] { run(folder, request); });
}

FirstImport::~FirstImport() {
  cancelled = true;
  thread.join();
}

void FirstImport::run(const QString &folder, const keeperProtocol::ImportRequest &request) {
  LibraryStore store;
  const QString problem = store.open(folder);
  const auto showProgress = [&](const ImportProgress &progress) {
    board.showImport({progress.done, progress.total, request.file});
    return !cancelled;
  };
  result = problem.isEmpty() ? importJob::run(store, request, showProgress)
                             : keeperProtocol::failed(keeperProtocol::kHandlerFailed, problem);
  if (result.failure) {
    BMLog("!!! import: %@", result.failure->message);
  } else {
    BMLog("%@", result.result->text);
  }
  const qint64 tracks = problem.isEmpty() && !result.failure ? qint64(store.tracks().count()) : 0;
  store.close();
  ended = true;
  board.write([&](keeperProtocol::Status &status) {
    status.importing.reset();
    status.tracks = tracks;
    if (result.failure) status.importProblem = result.failure->message;
  });
}
