#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>

#include "keeper/library/LibraryStore.h"
#include "keeper/server/KeeperEngine.h"
#include "keeper/server/LateExport.h"
#include "keeper/server/StatusBoard.h"

class FirstImport;
class Interpreter;
class KeeperApplication;

/// Music Keeper as a whole, without its socket: the library of a folder, the application that scripts see,
/// and its XML, which is written beside the store when asked, at the end, and once nothing has changed for a
/// while; only the end waits for it. A library that is new takes in the newest library file of the user's
/// while scripts already read it, empty and closed to changes until then. Until `open` has seen whether it
/// does, the status says that an import runs.
class MusicKeeper : public KeeperEngine {
 public:
  struct Setup {
    QString folder;
    /// What is taken in at the beginning; without a file, a new library takes in the newest one there is.
    keeperProtocol::ImportRequest import;
    /// The import is done when `open` returns.
    bool waitsForImport = false;
    std::chrono::milliseconds exportQuiet = std::chrono::seconds(30);
    /// However many changes follow each other.
    std::chrono::milliseconds exportLatest = std::chrono::minutes(5);
  };

  explicit MusicKeeper(Setup setup);
  ~MusicKeeper() override;

  QString open() override;
  ScriptOutcome run(const QString &source) override;
  ScriptOutcome importFile(const keeperProtocol::ImportRequest &request) override;
  ScriptOutcome exportFile(const keeperProtocol::ExportRequest &request) override;
  bool hasUnsecured() override;
  QString secure() override;
  void interrupt() override;
  void close() override;
  bool wantsToQuit() const override { return quits; }
  keeperProtocol::Status status() const override { return board.read(); }

  /// What the import of `open` came to; neither result nor failure if there was none.
  const ScriptOutcome &openingImport() const { return opening; }

 private:
  QString openLibrary();
  QString openStore(LibraryStore::Access access);
  void endScripts();
  /// Opens the library to changes once the import beside it has ended.
  void takeOverFirstImport();
  void noteState();
  /// Empty, or what went wrong; does not wait for the file.
  QString exportSoon();
  void exportLate();
  bool isImporting() const { return firstImport != nullptr; }

  const Setup setup;
  StatusBoard board;
  std::atomic<bool> quits = false;
  std::atomic<bool> interrupted = false;
  /// Counts of commits: those made, and those of them that the disk has for sure.
  std::atomic<quint64> committed = 0;
  std::atomic<quint64> secured = 0;
  /// One export at a time.
  std::mutex exporting;

  // The script thread only.
  LibraryStore store;
  std::unique_ptr<KeeperApplication> application;
  std::mutex replacing;
  // Replaced under its lock.
  std::unique_ptr<Interpreter> interpreter;
  std::unique_ptr<FirstImport> firstImport;
  ScriptOutcome opening;
  qint64 seenStamp = -1;

  std::unique_ptr<LateExport> lateExport;
};
