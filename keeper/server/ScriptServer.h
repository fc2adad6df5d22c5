#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "keeper/server/ClientConnection.h"
#include "platform/keeper/KeeperPlace.h"

/// The keeper's socket: open to its own user alone, for 64 clients at a time. A thread of its own does all
/// reading and writing, so no client holds up another, however slow or broken it is. Where all places are
/// taken, the one that has been silent longest, for a second at least, makes room; one that waits for an
/// answer never does.
class ScriptServer {
 public:
  using ClientID = quint64;
  /// Is given each message, on the server's thread, and returns at once.
  using Receiver = std::function<void(ClientID, const QByteArray &)>;

  static constexpr size_t kMostClients = 64;

  ScriptServer(KeeperPlace place, Receiver receiver);
  ScriptServer(const ScriptServer &) = delete;
  /// As `close`.
  ~ScriptServer();

  /// Begins to listen, in place of a socket that a dead process has left: the caller holds the lock of the
  /// place. False with one line in `error`.
  [[nodiscard]] bool listen(QString *error);
  /// Sends the answer to a client's message; a client that is gone costs nothing. Any thread.
  void answer(ClientID client, const QByteArray &text);
  /// Takes the socket away: nobody new comes in. Any thread.
  void leave();
  /// As `leave`; then drops all clients, after the answers that were given are sent, or a second is
  /// over.
  void close();

 private:
  struct Answer {
    ClientID client;
    QByteArray text;
  };
  void run();
  void wake();
  /// False if there is no room, or none can be had.
  bool acceptClient();
  bool makeRoom();
  void takeAnswers();
  void serve(ClientID id, short happened);
  bool isDone() const;

  const KeeperPlace place;
  const Receiver receiver;
  int listener = -1;
  int wakeSockets[2] = {-1, -1};
  std::thread thread;
  std::atomic<bool> closing = false;
  std::mutex lock;
  // Guarded by lock.
  std::vector<Answer> answers;

  // The server's thread only.
  std::map<ClientID, std::unique_ptr<ClientConnection>> clients;
  ClientID lastClient = 0;
  ClientConnection::Moment giveUp;
};
