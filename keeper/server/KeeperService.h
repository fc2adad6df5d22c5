#pragma once

#include <functional>

#include "keeper/server/KeeperEngine.h"
#include "keeper/server/ScriptServer.h"
#include "keeper/server/ScriptThread.h"

/// Brings what comes over the socket to the library and the answers back. Main thread.
class KeeperService {
 public:
  /// The engine outlives the service. `onEnd` is called, on any thread, when the service is to be ended: with
  /// a line that says why the library could not be opened, or with an empty one after a script asked to quit
  /// and was answered.
  KeeperService(KeeperPlace place, KeeperEngine &engine, std::function<void(const QString &problem)> onEnd);
  KeeperService(const KeeperService &) = delete;
  /// As `stop`.
  ~KeeperService();

  /// Listens, and opens the library; scripts that come meanwhile wait. False with one line in `error`.
  [[nodiscard]] bool start(QString *error);
  /// Lets the script that runs end, drops those that wait, closes the library and then the socket. Waits. Any
  /// one thread.
  void stop();

 private:
  void received(ScriptServer::ClientID client, const QByteArray &message);
  void perform(ScriptServer::ClientID client, const keeperProtocol::Request &request);

  KeeperEngine &engine;
  const std::function<void(const QString &)> onEnd;
  ScriptServer server;
  ScriptThread scripts;
  bool stopped = false;
};
