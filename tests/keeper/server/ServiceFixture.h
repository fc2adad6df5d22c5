#pragma once

#include <condition_variable>
#include <functional>

#include "keeper/server/KeeperService.h"
#include "platform/keeper/KeeperConnection.h"
#include "tests/fixtures/TestPlatform.h"

/// Answers scripts in place of a library: a text by itself, "change" by changing something that the disk then
/// has to get, "wait" once it is let go on, "large" by 12 MiB,
/// "quit" by asking to quit.
class StandInEngine : public KeeperEngine {
 public:
  QString open() override { return {}; }
  ScriptOutcome run(const QString &source) override;
  ScriptOutcome importFile(const keeperProtocol::ImportRequest &) override { return {}; }
  ScriptOutcome exportFile(const keeperProtocol::ExportRequest &) override { return {}; }
  bool hasUnsecured() override { return changed != secured; }
  QString secure() override;
  void interrupt() override {}
  void close() override { isClosed = true; }
  bool wantsToQuit() const override { return quits; }
  keeperProtocol::Status status() const override;

  void letGoOn();
  /// Holds the disk, or lets it go on, with a problem or without.
  void holdDisk();
  void letDiskGoOn(const QString &problem = {});

  std::atomic<int> ran = 0;
  std::atomic<bool> isClosed = false;
  std::atomic<int> changed = 0, secured = 0, flushes = 0;

 private:
  std::mutex lock;
  std::condition_variable change;
  bool goesOn = false, diskGoesOn = true;
  QString diskProblem;
  std::atomic<bool> quits = false;
};

/// The service with its socket in a folder of the test's, and a stand-in behind it.
class ServiceFixture : public TestPlatform {
 protected:
  ServiceFixture();
  ~ServiceFixture() override;

  std::unique_ptr<KeeperConnection> connect();
  /// Asks over a connection; what came back as text, or "error NUMBER", or "nothing".
  static QString ask(KeeperConnection &connection, const QString &script);
  /// A connection without any manners.
  int rawConnection();
  static void write(int handle, const QByteArray &bytes);
  /// Reads until the other side closes.
  static QByteArray readAll(int handle);
  /// Asks again and again until it holds; false after some seconds.
  static bool eventually(const std::function<bool()> &holds);

  const KeeperPlace place;
  StandInEngine engine;
  std::atomic<int> ends = 0;
  KeeperService service;
};
