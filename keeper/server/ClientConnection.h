#pragma once

#include <QByteArray>
#include <chrono>
#include <optional>

#include "platform/keeper/MessageReader.h"

/// One client of the socket, as its server sees it: one message is read, answered, and only then the next one
/// is looked at. Never blocks. The server's thread.
class ClientConnection {
 public:
  using Moment = std::chrono::steady_clock::time_point;

  /// Takes over a connected socket.
  explicit ClientConnection(int socketHandle);
  ClientConnection(const ClientConnection &) = delete;
  ~ClientConnection();

  int descriptor() const { return handle; }
  /// What the server is to wait for, as `poll` names it.
  short events() const;
  /// Reads and writes what can be done at once, after `poll` has told `happened`. False if the client is gone
  /// or has no more to say that can be understood: then it is to be dropped.
  [[nodiscard]] bool serve(short happened);
  /// The next message; nothing while it is not whole, or while the last one waits for its answer.
  std::optional<QByteArray> takeMessage();
  /// Answers the message that was taken.
  void answer(const QByteArray &text);

  bool isWaitingForAnswer() const { return state == State::Waiting; }
  bool hasOutput() const { return sent < output.size(); }
  /// When it last came or went a byte.
  Moment lastProgress() const { return progress; }

 private:
  enum class State { Reading, Waiting, Writing };
  bool read();
  bool write();

  const int handle;
  State state = State::Reading;
  MessageReader reader;
  QByteArray output;
  qsizetype sent = 0;
  bool closesAfterOutput = false;
  Moment progress;
};
