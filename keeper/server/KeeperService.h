#pragma once

#include <functional>

#include "keeper/server/AnswerGate.h"
#include "keeper/server/KeeperEngine.h"
#include "keeper/server/ScriptServer.h"
#include "keeper/server/ScriptThread.h"

/// Brings what comes over the socket to the library and the answers back. No answer leaves before the disk
/// has what was changed until then, also by other clients; scripts go on meanwhile. Main thread.
class KeeperService {
 public:
  /// The engine outlives the service. `onEnd` is called, on any thread, when the service is to be ended: with
  /// a line that says why the library could not be opened or the disk failed, or with an empty one after a
  /// script asked to quit and was answered.
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
  void send(ScriptServer::ClientID client, const QByteArray &answer, bool quits, const QString &problem);

  KeeperEngine &engine;
  const std::function<void(const QString &)> onEnd;
  ScriptServer server;
  AnswerGate gate;
  ScriptThread scripts;
  bool stopped = false;
};
