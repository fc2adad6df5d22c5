#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>
#include <memory>
#include <optional>

#include "platform/keeper/KeeperPlace.h"

/// One connection to the keeper that serves at a place. One thread at a time.
class KeeperConnection {
 public:
  using Wait = std::optional<std::chrono::milliseconds>;

  /// Connects; null if nobody listens there who is this user, or not within `wait` (nothing: for ever), with
  /// the reason in `error` (may be null).
  static std::unique_ptr<KeeperConnection> open(const KeeperPlace &place, Wait wait, QString *error);
  KeeperConnection(const KeeperConnection &) = delete;
  ~KeeperConnection();

  /// Sends a text and waits for the answer. Nothing if the connection broke or the time is over; the
  /// connection is then of no more use.
  std::optional<QByteArray> ask(const QByteArray &text, Wait wait = std::nullopt);
  /// True while nothing speaks against another question.
  bool isUsable() const;
  /// Ends the question that waits for its answer: it gets nothing. Any thread.
  void breakOff();

 private:
  using Deadline = std::optional<std::chrono::steady_clock::time_point>;
  explicit KeeperConnection(int socketHandle) : handle(socketHandle) {}
  bool connectTo(const QByteArray &socketPath, Deadline deadline, QString *error);
  bool waitFor(short events, Deadline deadline) const;
  bool send(const QByteArray &bytes, Deadline deadline);

  const int handle;
  bool broken = false;
};
