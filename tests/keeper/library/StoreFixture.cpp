#include "tests/keeper/library/StoreFixture.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>

Dictionary StoreFixture::named(const QString &name) {
  const Dictionary keys_ = Dictionary::make();
  keys_.set(keys::Name, name);
  return keys_;
}

QString StoreFixture::namesIn(PlaylistRow playlist) {
  QStringList names;
  for (const PlaylistEntry &entry : store.entries().all(playlist)) names.append(nameOf(entry.track));
  return names.join(u' ');
}

void StoreFixture::reopen() {
  store.close();
  ASSERT_EQ(store.open(storeFolder()), QString());
}

QByteArray runAndKill(const std::function<void(int)> &child, qsizetype bytes, unsigned microseconds) {
  int ends[2];
  if (::pipe(ends) != 0) return {};
  const pid_t process = ::fork();
  if (process == 0) {
    ::close(ends[0]);
    child(ends[1]);
    ::_exit(0);
  }
  ::close(ends[1]);
  QByteArray told;
  char buffer[4096];
  ssize_t count = 1;
  const auto take = [&] {
    count = ::read(ends[0], buffer, sizeof buffer);
    if (count > 0) told.append(buffer, count);
  };
  while (count > 0 && told.size() < bytes) take();
  ::usleep(microseconds);
  ::kill(process, SIGKILL);
  while (count > 0) take();
  ::close(ends[0]);
  ::waitpid(process, nullptr, 0);
  return told;
}

Value treeOf(const QString &xmlPath) {
  QFile file(xmlPath);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QString error;
  return platform().propertyLists->parse(file.readAll(), &error);
}
