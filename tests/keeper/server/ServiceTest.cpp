#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <thread>

#include "platform/keeper/KeeperScriptHost.h"
#include "platform/keeper/LocalSocket.h"
#include "platform/keeper/OutcomeJson.h"
#include "tests/keeper/server/ServiceFixture.h"

using namespace keeperProtocol;
using namespace std::chrono_literals;

namespace {

class KeeperServer : public ServiceFixture {};

/// Listens at a place and breaks off its one answer.
class ListeningSocket {
 public:
  explicit ListeningSocket(const KeeperPlace &place) {
    const auto address = *localSocket::addressOf(place.socket());
    EXPECT_EQ(::bind(handle, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(handle, 1), 0);
  }
  ~ListeningSocket() { ::close(handle); }
  void answerOnce(const QByteArray &bytes) const {
    const int client = ::accept(handle, nullptr, nullptr);
    char piece[4096];
    EXPECT_GT(::read(client, piece, sizeof piece), 0);
    EXPECT_EQ(::write(client, bytes.constData(), size_t(bytes.size())), ssize_t(bytes.size()));
    ::close(client);
  }

 private:
  const int handle = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

TEST_F(KeeperServer, IsOpenToItsOwnUserAlone) {
  struct stat folderFacts = {}, socketFacts = {};
  ASSERT_EQ(::stat(QFile::encodeName(place.folder).constData(), &folderFacts), 0);
  ASSERT_EQ(::stat(QFile::encodeName(place.socket()).constData(), &socketFacts), 0);
  EXPECT_EQ(folderFacts.st_mode & 0777, 0700u);
  EXPECT_EQ(socketFacts.st_mode & 0777, 0600u);
  ASSERT_EQ(::chmod(QFile::encodeName(place.folder).constData(), 0755), 0);
  EXPECT_FALSE(KeeperConnection::open(place, 5s, nullptr)) << "anybody might listen in an open folder";
}

TEST_F(KeeperServer, AnswersScriptsOfManyThreadsOneAfterAnother) {
  KeeperScriptHost host(place, std::nullopt);
  std::atomic<int> right = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 12; ++i) {
    threads.emplace_back([&, i] {
      for (int k = 0; k < 50; ++k) {
        const QString text = QString::number(i * 1000 + k);
        const ScriptOutcome outcome = host.run(text);
        if (outcome.result && outcome.result->text == text) ++right;
      }
    });
  }
  for (std::thread &thread : threads) thread.join();
  EXPECT_EQ(right, 12 * 50);
}

TEST_F(KeeperServer, TellsItsStateAtOnceWhileAScriptRuns) {
  const auto slow = connect(), other = connect();
  std::thread asking([&] { EXPECT_EQ(ask(*slow, QStringLiteral("wait")), QStringLiteral("wait")); });
  EXPECT_TRUE(eventually([this] { return engine.ran == 1; }));
  const auto answer = other->ask(encodeRequest(StatusRequest{}), 10s);
  ASSERT_TRUE(answer);
  EXPECT_EQ(decodeStatus(*answer)->tracks, 1);
  engine.letGoOn();
  asking.join();
}

TEST_F(KeeperServer, NoAnswerLeavesBeforeTheDiskHasWhatItTells) {
  engine.holdDisk();
  std::atomic<int> answered = 0;
  std::vector<std::thread> clients;
  const auto begin = [&](const QString &script) {
    const int before = engine.ran;
    clients.emplace_back([this, script, &answered] {
      EXPECT_EQ(ask(*connect(), script), script);
      ++answered;
    });
    ASSERT_TRUE(eventually([&] { return engine.ran == before + 1; })) << "scripts wait for no disk";
  };
  begin(QStringLiteral("change"));
  ASSERT_TRUE(eventually([this] { return engine.flushes == 1; }));
  for (int i = 0; i < 4; ++i) begin(QStringLiteral("change"));
  begin(QStringLiteral("look"));
  EXPECT_EQ(answered, 0) << "what was only seen could vanish as well";
  engine.letDiskGoOn();
  for (std::thread &client : clients) client.join();
  EXPECT_EQ(engine.flushes, 2) << "those that waited share one visit to the disk";
  EXPECT_EQ(ask(*connect(), QStringLiteral("look")), QStringLiteral("look"));
  EXPECT_EQ(engine.flushes, 2);
}

TEST_F(KeeperServer, AFailedDiskIsAnsweredAndEndsTheService) {
  engine.letDiskGoOn(QStringLiteral("the disk is gone"));
  EXPECT_EQ(ask(*connect(), QStringLiteral("change")), QStringLiteral("error -10000"));
  EXPECT_TRUE(eventually([this] { return ends == 1; }));
}

TEST_F(KeeperServer, GarbageIsAnsweredAndCostsNobodyElseAnything) {
  const auto connection = connect();
  for (const QByteArray &garbage : {QByteArray("no JSON"), QByteArray(100'000, '['), QByteArray("{}")}) {
    const auto answer = connection->ask(garbage, 10s);
    ASSERT_TRUE(answer);
    EXPECT_EQ(decodeOutcome(*answer)->failure->number, kHandlerFailed);
  }
  EXPECT_EQ(ask(*connection, QStringLiteral("on")), QStringLiteral("on"));
  const int rude = rawConnection();
  write(rude, "GET / HTTP/1.1\r\n\r\n");
  const QByteArray told = readAll(rude);
  EXPECT_TRUE(decodeOutcome(told.mid(4))->failure) << "and the connection is closed";
  EXPECT_EQ(ask(*connection, QStringLiteral("on")), QStringLiteral("on"));
}

TEST_F(KeeperServer, ClientsThatDieOrStallHoldUpNobody) {
  const QByteArray message = framed(encodeRequest(ScriptRequest{QStringLiteral("a")}));
  for (const qsizetype sent : {qsizetype(0), qsizetype(2), qsizetype(6), message.size()}) {
    const int dying = rawConnection();
    write(dying, message.first(sent));
    ::close(dying);
  }
  const int stalled = rawConnection(), greedy = rawConnection();
  write(stalled, message.first(9));
  write(greedy, framed(encodeRequest(ScriptRequest{QStringLiteral("large")})));
  EXPECT_EQ(ask(*connect(), QStringLiteral("on")), QStringLiteral("on"));
  write(stalled, message.mid(9));
  ::shutdown(stalled, SHUT_WR);
  EXPECT_TRUE(readAll(stalled).endsWith("}")) << "it goes on where it was";
  ::shutdown(greedy, SHUT_WR);
  EXPECT_GT(readAll(greedy).size(), 12 * 1024 * 1024);
}

TEST_F(KeeperServer, TheClientThatIsSilentLongestMakesRoomUnlessItWaitsForAnAnswer) {
  const auto waiting = connect();
  std::thread asking([&] { EXPECT_EQ(ask(*waiting, QStringLiteral("wait")), QStringLiteral("wait")); });
  EXPECT_TRUE(eventually([this] { return engine.ran == 1; }));
  std::vector<int> silent;
  for (size_t i = 0; i + 1 < ScriptServer::kMostClients; ++i) silent.push_back(rawConnection());
  const auto late = connect();
  const auto answer = late->ask(encodeRequest(StatusRequest{}), 20s);
  EXPECT_TRUE(answer) << "the house is full";
  engine.letGoOn();
  asking.join();
  EXPECT_EQ(ask(*late, QStringLiteral("on")), QStringLiteral("on"));
  for (const int handle : silent) ::close(handle);
}

TEST_F(KeeperServer, AQuitIsAnsweredAndTheSocketIsGoneAtTheEnd) {
  const auto connection = connect();
  EXPECT_EQ(ask(*connection, QStringLiteral("quit")), QStringLiteral("quit"));
  EXPECT_TRUE(eventually([this] { return ends > 0; }));
  service.stop();
  EXPECT_TRUE(engine.isClosed);
  EXPECT_FALSE(QFileInfo::exists(place.socket()));
  EXPECT_FALSE(connection->isUsable());
}

TEST_F(KeeperServer, TheEndWaitsForTheScriptThatRunsAndDropsTheOthers) {
  const auto running = connect(), queued = connect();
  QString first, second;
  std::thread asking([&] { first = ask(*running, QStringLiteral("wait")); });
  EXPECT_TRUE(eventually([this] { return engine.ran == 1; }));
  std::thread waiting([&] { second = ask(*queued, QStringLiteral("never")); });
  std::thread stopping([this] { service.stop(); });
  EXPECT_TRUE(eventually([this] { return !QFileInfo::exists(place.socket()); }));
  engine.letGoOn();
  stopping.join();
  asking.join();
  waiting.join();
  EXPECT_EQ(first, QStringLiteral("wait"));
  EXPECT_TRUE(second == u"nothing" || second == u"never") << second.toStdString();
}

TEST_F(KeeperServer, AConnectionThatEndsWhileNobodyAsksIsNotAskedAgain) {
  KeeperScriptHost host(place, std::nullopt);
  EXPECT_TRUE(host.run(QStringLiteral("a")).result);
  service.stop();
  const ScriptOutcome outcome = host.run(QStringLiteral("a"));
  ASSERT_TRUE(outcome.failure);
  EXPECT_EQ(outcome.failure->number, kNotRunning);
}

TEST_F(KeeperServer, AKeeperThatGoesAwayInsideItsAnswerIsMinus609) {
  const QByteArray whole =
      framed(encodeOutcome({ScriptDescriptor::ofText(QStringLiteral("text")), std::nullopt}));
  for (const qsizetype sent : {qsizetype(0), qsizetype(3), whole.size() - 1}) {
    const KeeperPlace other{folder(QStringLiteral("other%1").arg(sent))};
    ASSERT_TRUE(other.prepare(nullptr));
    ListeningSocket listener(other);
    std::thread answering([&] { listener.answerOnce(whole.first(sent)); });
    const ScriptOutcome outcome = KeeperScriptHost(other, std::nullopt).run(QStringLiteral("a"));
    answering.join();
    ASSERT_TRUE(outcome.failure);
    EXPECT_EQ(outcome.failure->number, kConnectionInvalid) << sent;
  }
}

}  // namespace
