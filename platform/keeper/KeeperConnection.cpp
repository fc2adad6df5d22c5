#include "platform/keeper/KeeperConnection.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <cstring>
#include <thread>

#include "platform/keeper/KeeperProtocol.h"
#include "platform/keeper/LocalSocket.h"
#include "platform/keeper/MessageReader.h"
#include "platform/keeper/PeerUser.h"

using std::chrono::steady_clock;
using namespace std::chrono_literals;

namespace {

void tell(QString *error, const QString &reason) {
  if (error) *error = reason;
}

std::optional<steady_clock::time_point> deadlineOf(KeeperConnection::Wait wait) {
  if (!wait) return std::nullopt;
  return steady_clock::now() + *wait;
}

}  // namespace

std::unique_ptr<KeeperConnection> KeeperConnection::open(const KeeperPlace &place, Wait wait,
                                                         QString *error) {
  // In a shared temporary folder anybody might listen under our name.
  if (!place.isSafe(error)) return nullptr;
  const int made = localSocket::make();
  if (made < 0) {
    tell(error, QString::fromLocal8Bit(std::strerror(errno)));
    return nullptr;
  }
  std::unique_ptr<KeeperConnection> connection(new KeeperConnection(made));
  if (!connection->connectTo(QFile::encodeName(place.socket()), deadlineOf(wait), error)) return nullptr;
  if (isPeerThisUser(made)) return connection;
  tell(error, QStringLiteral("another user listens at %1").arg(place.socket()));
  return nullptr;
}

KeeperConnection::~KeeperConnection() {
  ::close(handle);
}

bool KeeperConnection::connectTo(const QByteArray &socketPath, Deadline deadline, QString *error) {
  const auto address = localSocket::addressOf(QFile::decodeName(socketPath));
  if (!address) {
    tell(error, QStringLiteral("%1 is too long for a socket").arg(QFile::decodeName(socketPath)));
    return false;
  }
  while (::connect(handle, reinterpret_cast<const sockaddr *>(&*address), sizeof *address) != 0) {
    const int reason = errno;
    if (reason == EINTR) continue;
    // A full queue of who wants to connect gives no sign when there is room again.
    if (reason == EAGAIN && (!deadline || steady_clock::now() < *deadline)) {
      std::this_thread::sleep_for(20ms);
      continue;
    }
    tell(error, QString::fromLocal8Bit(std::strerror(reason)));
    return false;
  }
  return true;
}

bool KeeperConnection::waitFor(short events, Deadline deadline) const {
  while (true) {
    int milliseconds = -1;
    if (deadline) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - steady_clock::now());
      milliseconds = int(std::max<qint64>(left.count(), 0));
    }
    pollfd entry{handle, events, 0};
    const int ready = ::poll(&entry, 1, milliseconds);
    if (ready < 0 && errno == EINTR) continue;
    return ready > 0;
  }
}

bool KeeperConnection::send(const QByteArray &bytes, Deadline deadline) {
  qsizetype sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count = ::send(handle, bytes.constData() + sent, size_t(bytes.size() - sent), MSG_NOSIGNAL);
    if (count > 0) sent += count;
    if (count >= 0 || errno == EINTR) continue;
    if ((errno != EAGAIN && errno != EWOULDBLOCK) || !waitFor(POLLOUT, deadline)) return false;
  }
  return true;
}

std::optional<QByteArray> KeeperConnection::ask(const QByteArray &text, Wait wait) {
  const Deadline deadline = deadlineOf(wait);
  broken = true;  // until the answer is whole
  if (!send(keeperProtocol::framed(text), deadline)) return std::nullopt;
  MessageReader reader;
  QByteArray buffer(64 * 1024, Qt::Uninitialized);
  while (true) {
    const ssize_t count = ::recv(handle, buffer.data(), size_t(buffer.size()), 0);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
      if (!waitFor(POLLIN, deadline)) return std::nullopt;
      continue;
    }
    if (count <= 0 || !reader.feed(buffer.constData(), count)) return std::nullopt;
    std::optional<QByteArray> answer = reader.next();
    if (!answer) continue;
    broken = reader.isInsideMessage();
    return answer;
  }
}

void KeeperConnection::breakOff() {
  ::shutdown(handle, SHUT_RDWR);
}

bool KeeperConnection::isUsable() const {
  if (broken) return false;
  // Between two questions nothing comes but the end.
  pollfd entry{handle, POLLIN, 0};
  return ::poll(&entry, 1, 0) == 0;
}
