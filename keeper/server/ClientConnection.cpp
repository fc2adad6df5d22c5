#include "keeper/server/ClientConnection.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

#include "platform/keeper/KeeperProtocol.h"
#include "platform/keeper/OutcomeJson.h"

using std::chrono::steady_clock;

namespace {

// A piece at a time, so that a client that floods the socket takes turns with the others.
constexpr size_t kPiece = 64 * 1024;

bool isForLater(int reason) {
  return reason == EINTR || reason == EAGAIN || reason == EWOULDBLOCK;
}

}  // namespace

ClientConnection::ClientConnection(int socketHandle) : handle(socketHandle), progress(steady_clock::now()) {}

ClientConnection::~ClientConnection() {
  ::close(handle);
}

short ClientConnection::events() const {
  switch (state) {
    case State::Reading:
      return POLLIN;
    case State::Waiting:
      return 0;
    case State::Writing:
      return POLLOUT;
  }
  return 0;
}

bool ClientConnection::serve(short happened) {
  if ((happened & (POLLERR | POLLNVAL)) != 0) return false;
  if (state == State::Writing) return write();
  if ((happened & POLLIN) != 0) return read();
  return (happened & POLLHUP) == 0;
}

bool ClientConnection::read() {
  char piece[kPiece];
  const ssize_t count = ::recv(handle, piece, sizeof piece, 0);
  if (count < 0 && isForLater(errno)) return true;
  if (count <= 0) return false;
  progress = steady_clock::now();
  if (reader.feed(piece, count)) return true;
  closesAfterOutput = true;
  answer(keeperProtocol::encodeOutcome(
      keeperProtocol::failed(keeperProtocol::kHandlerFailed, QStringLiteral("The message is too long."))));
  return write();
}

std::optional<QByteArray> ClientConnection::takeMessage() {
  if (state != State::Reading) return std::nullopt;
  std::optional<QByteArray> message = reader.next();
  if (message) state = State::Waiting;
  return message;
}

void ClientConnection::answer(const QByteArray &text) {
  output = keeperProtocol::framed(text);
  sent = 0;
  state = State::Writing;
}

bool ClientConnection::write() {
  const ssize_t count = ::send(handle, output.constData() + sent, size_t(output.size() - sent), MSG_NOSIGNAL);
  if (count < 0) return isForLater(errno);
  progress = steady_clock::now();
  sent += count;
  if (sent < output.size()) return true;
  output.clear();
  sent = 0;
  state = State::Reading;
  return !closesAfterOutput;
}
