// Music Keeper as a process of its own, asked through its socket: named scripts that change one track each,
// by one client and by several at once, beside the machine's bare fdatasync on the same disk; answers that
// change nothing; and what the process holds in memory after it.
//
//   keeper_socket_bench [tracks] [folder on the disk that is measured]

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "bench/BenchPlatform.h"
#include "bench/LibrarySample.h"
#include "bridge/NamedScripts.h"
#include "bridge/ScriptRunner.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "platform/keeper/KeeperPlace.h"
#include "platform/keeper/KeeperScriptHost.h"
#include "platform/keeper/KeeperStatus.h"
#include "platform/qt/LibplistPropertyList.h"
#include "platform/qt/QtFileFacts.h"

using std::chrono::steady_clock;
using namespace std::chrono_literals;

namespace {

constexpr auto kTime = 3s;

[[noreturn]] void fail(const char *what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

double secondsSince(steady_clock::time_point start) {
  return std::chrono::duration<double>(steady_clock::now() - start).count();
}

/// How often a second a page reaches the disk where the file has its blocks already.
double bareSyncs(const QString &folder) {
  const QByteArray name = QFile::encodeName(folder + QStringLiteral("/bare"));
  const int file = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  const QByteArray page(4096, 'p');
  constexpr int kPages = 256;
  for (int i = 0; i < kPages; ++i)
    if (::pwrite(file, page.constData(), 4096, off_t(i) * 4096) != 4096) fail("the disk is full");
  ::fsync(file);
  const auto start = steady_clock::now();
  int count = 0;
  for (; steady_clock::now() - start < 1s; ++count) {
    if (::pwrite(file, page.constData(), 4096, off_t(count % kPages) * 4096) != 4096)
      fail("the disk is full");
    ::fdatasync(file);
  }
  const double rate = count / secondsSince(start);
  ::close(file);
  ::unlink(name.constData());
  return rate;
}

/// The keeper's process, with a home and a runtime folder of its own in the environment.
class Keeper {
 public:
  Keeper(const QStringList &arguments, const KeeperPlace &place) {
    process = ::fork();
    if (process == 0) {
      std::vector<QByteArray> texts{QByteArrayLiteral(TALLYFEN_KEEPER)};
      for (const QString &argument : arguments) texts.push_back(QFile::encodeName(argument));
      std::vector<char *> pointers;
      for (QByteArray &text : texts) pointers.push_back(text.data());
      pointers.push_back(nullptr);
      ::execv(TALLYFEN_KEEPER, pointers.data());
      ::_exit(127);
    }
    while (!statusOfKeeper(place, 1s) || statusOfKeeper(place, 1s)->importing) {
      if (::waitpid(process, nullptr, WNOHANG) == process) fail("the keeper ended");
      std::this_thread::sleep_for(50ms);
    }
  }
  ~Keeper() {
    ::kill(process, SIGTERM);
    ::waitpid(process, nullptr, 0);
  }
  Keeper(const Keeper &) = delete;
  Keeper &operator=(const Keeper &) = delete;

  /// What it has had of the processors, in seconds.
  double processorSeconds() const {
    const QList<QByteArray> fields = read("stat").split(')').last().trimmed().split(' ');
    return double(fields.at(11).toLongLong() + fields.at(12).toLongLong()) / double(::sysconf(_SC_CLK_TCK));
  }
  /// A line of its "status", in MiB.
  double megabytes(const char *line) const {
    const QByteArray status = read("status");
    const qsizetype at = status.indexOf(line);
    return at < 0
               ? 0
               : status.mid(at + qsizetype(qstrlen(line)), 20).trimmed().split(' ').first().toDouble() / 1024;
  }

 private:
  QByteArray read(const char *what) const {
    QFile file(QStringLiteral("/proc/%1/%2").arg(process).arg(QString::fromLatin1(what)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  pid_t process = -1;
};

/// How many of its runs a second all the clients together have answered, each client a process.
template <class Run>
double rateOf(int clients, const Run &run) {
  int ends[2];
  if (::pipe(ends) != 0) fail("no pipe");
  const auto start = steady_clock::now();
  for (int client = 0; client < clients; ++client) {
    if (::fork() != 0) continue;
    qint64 count = 0;
    for (; steady_clock::now() - start < kTime; ++count) run(client, count);
    ::_exit(::write(ends[1], &count, sizeof count) == sizeof count ? 0 : 1);
  }
  ::close(ends[1]);
  qint64 all = 0, count = 0;
  for (int client = 0; client < clients; ++client) {
    if (::read(ends[0], &count, sizeof count) != sizeof count) fail("a client failed");
    all += count;
  }
  const double took = secondsSince(start);
  for (int client = 0; client < clients; ++client) ::wait(nullptr);
  ::close(ends[0]);
  return double(all) / took;
}

QStringList persistentIDs(const QByteArray &xml) {
  static const QByteArray mark = QByteArrayLiteral("<key>Persistent ID</key><string>");
  QStringList found;
  for (qsizetype at = xml.indexOf(mark); at >= 0; at = xml.indexOf(mark, at + 1))
    found += QString::fromLatin1(xml.mid(at + mark.size(), 16));
  return found;
}

void measureChanges(const Keeper &keeper, const QString &folder, const QStringList &tracks, int clients) {
  const double before = bareSyncs(folder), busy = keeper.processorSeconds();
  const double rate = rateOf(clients, [&](int client, qint64 count) {
    const QString &track = tracks[qsizetype((count * 997 + client * 31) % tracks.size())];
    const QString name = QStringLiteral("Artist %1 of %2").arg(count).arg(client);
    const auto done =
        iTunesInterface::changeValueInTrackWithPIDOfTypeToValue(track, QStringLiteral("Artist"), name);
    if (done == QStringLiteral("1")) return;
    std::fprintf(stderr, "error %lld: %s\n", qlonglong(iTunesInterface::lastScriptErrorNumber()),
                 qPrintable(done.value_or(QStringLiteral("no answer"))));
    ::_exit(2);
  });
  const double work =
      (keeper.processorSeconds() - busy) / (rate * std::chrono::duration<double>(kTime).count());
  const double bare = (before + bareSyncs(folder)) / 2;
  std::printf(
      "changes by %2d clients: %5.0f/s (at least 1500), bare fdatasync %.0f/s: %.2f times that; "
      "%.0f us of work each\n",
      clients, rate, bare, rate / bare, work * 1e6);
  std::fflush(stdout);
}

void measureAnswers(const Keeper &keeper) {
  const double busy = keeper.processorSeconds();
  const double rate = rateOf(1, [](int, qint64) {
    if (!iTunesInterface::versionString()) ::_exit(2);
  });
  const double work =
      (keeper.processorSeconds() - busy) / (rate * std::chrono::duration<double>(kTime).count());
  std::printf("answers of a version: %.0f/s (at least 5000); %.0f us of work each\n", rate, work * 1e6);
}

}  // namespace

int main(int count, char **arguments) {
  const int size = count > 1 ? std::atoi(arguments[1]) : 10000;
  const QString disk = count > 2 ? QFile::decodeName(arguments[2]) : QStringLiteral("/tmp");
  const QTemporaryDir temporary(disk + QStringLiteral("/keeper-bench-XXXXXX"));
  const QString folder = temporary.path();
  for (const char *name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
    qputenv(name, QFile::encodeName(folder));
  startBenchPlatform();
  LibplistPropertyList propertyLists;
  QtFileFacts fileFacts;
  const KeeperPlace place = KeeperPlace::ofUser(folder);
  KeeperScriptHost host(place, std::nullopt);
  Platform services = platform();
  services.propertyLists = &propertyLists;
  services.fileFacts = &fileFacts;
  services.scriptHost = &host;
  services.bundle.resourceFolder = QStringLiteral(TALLYFEN_RESOURCE_FOLDER);
  setPlatform(services);
  // Read once here, so that the clients only ask.
  if (!iTunesInterface::scriptNamed(QStringLiteral("iTunes_Track_Rename"))) fail("there are no scripts");
  const QString library = folder + QStringLiteral("/library"), xml = folder + QStringLiteral("/sample.xml");
  const QByteArray sample = librarySample(size);
  QFile file(xml);
  if (!file.open(QIODevice::WriteOnly) || file.write(sample) != sample.size()) fail("the disk is full");
  file.close();
  {
    const Keeper keeper({QStringLiteral("--folder"), library, QStringLiteral("--import"), xml}, place);
    std::printf("%d tracks are imported: at most %.0f MiB, now %.0f MiB\n", size, keeper.megabytes("VmHWM:"),
                keeper.megabytes("VmRSS:"));
  }
  const Keeper keeper({QStringLiteral("--folder"), library}, place);
  const QStringList tracks = persistentIDs(sample);
  for (const int clients : {1, 4, 16, 48}) measureChanges(keeper, folder, tracks, clients);
  measureAnswers(keeper);
  std::printf("serving %d tracks: at most %.0f MiB, now %.0f MiB (below 250)\n", size,
              keeper.megabytes("VmHWM:"), keeper.megabytes("VmRSS:"));
  return 0;
}
