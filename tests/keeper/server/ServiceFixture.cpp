#include "tests/keeper/server/ServiceFixture.h"
#include "platform/keeper/OutcomeJson.h"

#include <sys/socket.h>
#include <unistd.h>

#include <thread>

#include "platform/keeper/LocalSocket.h"

using namespace std::chrono_literals;

ScriptOutcome StandInEngine::run(const QString &source) {
  ++ran;
  if (source == u"wait") {
    std::unique_lock guard(lock);
    change.wait(guard, [this] { return goesOn; });
  }
  if (source == u"change") ++changed;
  if (source == u"quit") quits = true;
  if (source == u"large") return {ScriptDescriptor::ofText(QString(12 * 1024 * 1024, u'l')), std::nullopt};
  return {ScriptDescriptor::ofText(source), std::nullopt};
}

keeperProtocol::Status StandInEngine::status() const {
  keeperProtocol::Status status;
  status.version = QStringLiteral("1.0");
  status.tracks = ran;
  return status;
}

QString StandInEngine::secure() {
  const int made = changed;
  ++flushes;
  std::unique_lock guard(lock);
  change.wait(guard, [this] { return diskGoesOn; });
  if (diskProblem.isEmpty()) secured = made;
  return diskProblem;
}

void StandInEngine::holdDisk() {
  const std::lock_guard guard(lock);
  diskGoesOn = false;
}

void StandInEngine::letDiskGoOn(const QString &problem) {
  const std::lock_guard guard(lock);
  diskGoesOn = true;
  diskProblem = problem;
  change.notify_all();
}

void StandInEngine::letGoOn() {
  const std::lock_guard guard(lock);
  goesOn = true;
  change.notify_all();
}

ServiceFixture::ServiceFixture()
    : place{folder(QStringLiteral("run"))}, service(place, engine, [this](const QString &) { ++ends; }) {
  QString error;
  EXPECT_TRUE(place.prepare(&error)) << error.toStdString();
  EXPECT_TRUE(service.start(&error)) << error.toStdString();
}

ServiceFixture::~ServiceFixture() {
  engine.letGoOn();
  engine.letDiskGoOn();
}

std::unique_ptr<KeeperConnection> ServiceFixture::connect() {
  QString error;
  auto connection = KeeperConnection::open(place, 5s, &error);
  EXPECT_TRUE(connection) << error.toStdString();
  return connection;
}

QString ServiceFixture::ask(KeeperConnection &connection, const QString &script) {
  const auto answer = connection.ask(encodeRequest(keeperProtocol::ScriptRequest{script}), 20s);
  const auto outcome = answer ? keeperProtocol::decodeOutcome(*answer) : std::nullopt;
  if (!outcome) return QStringLiteral("nothing");
  if (outcome->failure) return QStringLiteral("error %1").arg(outcome->failure->number.value_or(0));
  return outcome->result->text;
}

int ServiceFixture::rawConnection() {
  const int handle = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const auto address = *localSocket::addressOf(place.socket());
  EXPECT_EQ(::connect(handle, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
  return handle;
}

void ServiceFixture::write(int handle, const QByteArray &bytes) {
  ASSERT_EQ(::send(handle, bytes.constData(), size_t(bytes.size()), MSG_NOSIGNAL), ssize_t(bytes.size()));
}

QByteArray ServiceFixture::readAll(int handle) {
  QByteArray bytes;
  char piece[4096];
  for (ssize_t count; (count = ::read(handle, piece, sizeof piece)) > 0;) bytes.append(piece, count);
  ::close(handle);
  return bytes;
}

bool ServiceFixture::eventually(const std::function<bool()> &holds) {
  const auto deadline = std::chrono::steady_clock::now() + 20s;
  while (!holds()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(2ms);
  }
  return true;
}
