#include "keeper/server/ScriptServer.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <cstring>

#include "platform/keeper/LocalSocket.h"
#include "platform/keeper/PeerUser.h"
#include "support/BMLog.h"

using std::chrono::steady_clock;
using namespace std::chrono_literals;

namespace {

constexpr auto kSilence = 1s;
// How soon a full house is looked at again for somebody who has been silent long enough, and the last
// answers.
constexpr int kHurryMilliseconds = 100;

bool fail(QString *error, const QString &path, const QString &reason) {
  if (error) *error = QStringLiteral("cannot listen at %1: %2").arg(path, reason);
  return false;
}

}  // namespace

ScriptServer::ScriptServer(KeeperPlace place_, Receiver receiver_)
    : place(std::move(place_)), receiver(std::move(receiver_)) {}

ScriptServer::~ScriptServer() {
  close();
}

bool ScriptServer::listen(QString *error) {
  const auto address = localSocket::addressOf(place.socket());
  if (!address) return fail(error, place.socket(), QStringLiteral("the path is too long for a socket"));
  const QByteArray name = QFile::encodeName(place.socket());
  ::unlink(name.constData());
  listener = localSocket::make();
  const bool listens =
      listener >= 0 &&
      ::bind(listener, reinterpret_cast<const sockaddr *>(&*address), sizeof *address) == 0 &&
      ::chmod(name.constData(), 0600) == 0 && ::listen(listener, kMostClients) == 0 &&
      ::socketpair(AF_UNIX, SOCK_STREAM, 0, wakeSockets) == 0;
  if (!listens) {
    const QString reason = QString::fromLocal8Bit(std::strerror(errno));
    if (listener >= 0) ::close(listener);
    listener = -1;
    return fail(error, place.socket(), reason);
  }
  for (const int end : wakeSockets) {
    ::fcntl(end, F_SETFD, FD_CLOEXEC);
    ::fcntl(end, F_SETFL, O_NONBLOCK);
  }
  thread = std::thread([this] { run(); });
  return true;
}

void ScriptServer::answer(ClientID client, const QByteArray &text) {
  bool isFirst = false;
  {
    const std::lock_guard guard(lock);
    isFirst = answers.empty();
    answers.push_back({client, text});
  }
  // Those behind it are taken together with it.
  if (isFirst) wake();
}

void ScriptServer::leave() {
  if (thread.joinable()) ::unlink(QFile::encodeName(place.socket()).constData());
}

void ScriptServer::close() {
  if (!thread.joinable()) return;
  leave();
  giveUp = steady_clock::now() + 1s;
  closing = true;
  wake();
  thread.join();
  clients.clear();
  for (const int handle : {listener, wakeSockets[0], wakeSockets[1]}) ::close(handle);
}

void ScriptServer::wake() {
  const char byte = 1;
  // A full pipe wakes as well.
  (void)!::write(wakeSockets[0], &byte, 1);
}

void ScriptServer::run() {
  std::vector<pollfd> entries;
  std::vector<ClientID> ids;
  bool mayAccept = true;
  while (true) {
    // Looked at first: what was answered before the end is sent.
    const bool ends = closing;
    takeAnswers();
    if (ends && isDone()) return;
    entries.assign({{wakeSockets[1], POLLIN, 0}, {listener, short(mayAccept && !ends ? POLLIN : 0), 0}});
    ids.clear();
    for (const auto &[id, client] : clients) {
      ids.push_back(id);
      entries.push_back({client->descriptor(), client->events(), 0});
    }
    const bool hurries = !mayAccept || ends;
    mayAccept = true;
    if (::poll(entries.data(), nfds_t(entries.size()), hurries ? kHurryMilliseconds : -1) <= 0) continue;
    for (size_t i = 0; i < ids.size(); ++i) serve(ids[i], entries[i + 2].revents);
    if ((entries[1].revents & POLLIN) != 0) mayAccept = acceptClient();
  }
}

bool ScriptServer::isDone() const {
  const bool hasOutput = std::any_of(clients.begin(), clients.end(),
                                     [](const auto &entry) { return entry.second->hasOutput(); });
  return !hasOutput || steady_clock::now() > giveUp;
}

void ScriptServer::takeAnswers() {
  char bytes[64];
  while (::read(wakeSockets[1], bytes, sizeof bytes) > 0) {
  }
  std::vector<Answer> taken;
  {
    const std::lock_guard guard(lock);
    taken.swap(answers);
  }
  for (const Answer &answer : taken) {
    const auto found = clients.find(answer.client);
    if (found == clients.end()) continue;
    found->second->answer(answer.text);
    // As a rule it fits the socket, and the next look is spared.
    serve(answer.client, POLLOUT);
  }
}

void ScriptServer::serve(ClientID id, short happened) {
  const auto found = clients.find(id);
  if (happened == 0 || found == clients.end()) return;
  ClientConnection &client = *found->second;
  if (!client.serve(happened)) {
    clients.erase(found);
  } else if (const auto message = closing ? std::nullopt : client.takeMessage()) {
    receiver(id, *message);
  }
}

bool ScriptServer::acceptClient() {
  if (clients.size() >= kMostClients && !makeRoom()) return false;
  const int accepted = ::accept(listener, nullptr, nullptr);
  if (accepted < 0) return false;
  ::fcntl(accepted, F_SETFD, FD_CLOEXEC);
  ::fcntl(accepted, F_SETFL, O_NONBLOCK);
  if (isPeerThisUser(accepted)) {
    clients[++lastClient] = std::make_unique<ClientConnection>(accepted);
    return true;
  }
  BMLog("!! a connection of another user is refused");
  ::close(accepted);
  return true;
}

bool ScriptServer::makeRoom() {
  const auto order = [](const auto &a, const auto &b) {
    const bool aWaits = a.second->isWaitingForAnswer(), bWaits = b.second->isWaitingForAnswer();
    return aWaits != bWaits ? bWaits : a.second->lastProgress() < b.second->lastProgress();
  };
  const auto silent = std::min_element(clients.begin(), clients.end(), order);
  if (silent->second->isWaitingForAnswer()) return false;
  if (steady_clock::now() - silent->second->lastProgress() < kSilence) return false;
  clients.erase(silent);
  return true;
}
