// The keeper's store beside the machine: the import of 100,000 tracks against libplist's bare parse of the
// same file, the export, changes that each reach the disk, and what a store with 300,000 tracks costs in
// memory.
//
//   keeper_bench [tracks of the import] [tracks of the memory case]

#include <plist/plist.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "bench/BenchPlatform.h"
#include "bench/LibrarySample.h"
#include "keeper/library/EntryTable.h"
#include "keeper/library/LibraryExport.h"
#include "keeper/library/LibraryImport.h"
#include "keeper/library/PlaylistTable.h"
#include "keeper/library/TrackTable.h"
#include "platform/Platform.h"
#include "platform/qt/LibplistPropertyList.h"
#include "platform/qt/QtFileFacts.h"
#include "values/Keys.h"

namespace {

constexpr int kCommits = 2000;

void check(const QString &error) {
  if (error.isEmpty()) return;
  std::fprintf(stderr, "%s\n", qUtf8Printable(error));
  std::exit(1);
}

/// Of the clock, or of the processors alone with KEEPER_BENCH_CPU in the environment: for a machine that is
/// busy.
double seconds(const std::function<void()> &work) {
  static const bool ofProcessor = qEnvironmentVariableIsSet("KEEPER_BENCH_CPU");
  const auto now = [] {
    timespec time{};
    ::clock_gettime(ofProcessor ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
  };
  const double start = now();
  work();
  return now() - start;
}

/// Of this process now, in KiB.
qint64 residentKilobytes() {
  QFile file(QStringLiteral("/proc/self/statm"));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  return file.readAll().split(' ').at(1).toLongLong() * ::sysconf(_SC_PAGESIZE) / 1024;
}

/// In a process of its own, so that no measurement meets the memory of another one.
void apart(const std::function<void()> &work) {
  const pid_t child = ::fork();
  if (child == 0) {
    work();
    std::fflush(stdout);
    ::_exit(0);
  }
  ::waitpid(child, nullptr, 0);
}

double bareParse(const QString &path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) check(file.errorString());
  const QByteArray bytes = file.readAll();
  plist_t root = nullptr;
  const double took = seconds([&] { plist_from_xml(bytes.data(), uint32_t(bytes.size()), &root); });
  plist_free(root);
  return took;
}

void importAndExport(const QString &folder, const QString &xml, int tracks) {
  const double parse = std::min(bareParse(xml), bareParse(xml));
  LibraryStore store;
  check(store.open(folder));
  const double imported = seconds([&] { check(LibraryImport(store).run(xml)); });
  std::printf("import of %d tracks: %.2f s, bare parse %.2f s, ratio %.2f (at most 3)\n", tracks, imported,
              parse, imported / parse);
  const double exported = seconds([&] { check(LibraryExport(store).run()); });
  std::printf("export: %.2f s, %.0f tracks/s (at least 60000)\n", exported, tracks / exported);
}

void changes(const QString &folder) {
  LibraryStore store;
  check(store.open(folder));
  const double took = seconds([&] {
    for (int number = 0; number < kCommits; ++number) {
      store.tracks().set(store.tracks().at(number * 37 % store.tracks().count()),
                         {{keys::PlayCount, number}});
    }
  });
  std::printf("changes, each on the disk: %.0f/s (at least 1500)\n", kCommits / took);
}

/// What a program that serves a store holds after it has opened it and looked at everything once.
void memory(const QString &folder) {
  LibraryStore store;
  check(store.open(folder));
  qint64 bytes = 0;
  store.tracks().visitColumn(keys::Name, [&](TrackRow, const Value &name) { bytes += name.toText().size(); });
  store.entries().at(store.playlists().master(), 0);
  std::printf("serving %lld tracks: %.0f MiB (below 250)\n", (long long)store.tracks().count(),
              double(residentKilobytes()) / 1024);
}

}  // namespace

int main(int count, char **arguments) {
  const int tracks = count > 1 ? std::atoi(arguments[1]) : 100000;
  const int many = count > 2 ? std::atoi(arguments[2]) : 300000;
  startBenchPlatform();
  LibplistPropertyList propertyLists;
  QtFileFacts fileFacts;
  Platform services = platform();
  services.propertyLists = &propertyLists;
  services.fileFacts = &fileFacts;
  setPlatform(services);
  QTemporaryDir folder;
  for (const int size : {tracks, many}) {
    apart([&] {
      QFile file(folder.filePath(QString::number(size) + QStringLiteral(".xml")));
      if (!file.open(QIODevice::WriteOnly)) check(file.errorString());
      file.write(librarySample(size));
    });
    const QString xml = folder.filePath(QString::number(size) + QStringLiteral(".xml"));
    const QString store = folder.filePath(QString::number(size));
    apart([&] { importAndExport(store, xml, size); });
    apart([&] { changes(store); });
    apart([&] { memory(store); });
  }
  return 0;
}
