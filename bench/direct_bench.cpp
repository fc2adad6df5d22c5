// The library by direct access beside the same library from its XML file: how fast each is loaded, and what
// it costs in memory. 300,000 tracks and 200 playlists; another number of tracks may be given.

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "app/library/LibraryFile.h"
#include "bench/BenchPlatform.h"
#include "bench/LibrarySample.h"
#include "bridge/iTunesLibInterface.h"
#include "keeper/library/EntryTable.h"
#include "keeper/library/LibraryImport.h"
#include "keeper/library/PlaylistTable.h"
#include "keeper/library/StoreBatch.h"
#include "keeper/library/TrackTable.h"
#include "platform/Platform.h"
#include "platform/keeper/KeeperLibraryFramework.h"
#include "platform/qt/LibplistPropertyList.h"
#include "platform/qt/QtFileFacts.h"
#include "values/Keys.h"

namespace {

constexpr int kPlaylists = 200;
constexpr int kEntries = 500;

/// The store of a folder with the sample and the user's playlists.
bool fillStore(const QString &folder, const QString &xml) {
  LibraryStore store;
  QString problem = store.open(folder);
  if (problem.isEmpty()) problem = LibraryImport(store).run(xml);
  if (!problem.isEmpty()) {
    std::fprintf(stderr, "%s\n", qPrintable(problem));
    return false;
  }
  StoreBatch batch(store);
  const TrackRows tracks = store.tracks().rows();
  for (int list = store.playlists().count(); list < kPlaylists; ++list) {
    const Dictionary keys = Dictionary::make();
    keys.set(keys::Name, QStringLiteral("Playlist %1").arg(list));
    TrackRows members;
    for (int entry = 0; entry < kEntries; ++entry)
      members.push_back(tracks[(size_t(list) * 7919 + size_t(entry) * 131) % tracks.size()]);
    store.entries().append(store.playlists().make(keys), members);
  }
  batch.commit();
  return true;
}

/// Runs a load in a process of its own and prints what it took.
template <class Load>
void measure(const char *road, const Load &load) {
  std::fflush(stdout);
  const pid_t child = ::fork();
  if (child != 0) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return;
  }
  const size_t before = ::mallinfo2().uordblks + ::mallinfo2().hblkhd;
  const auto begin = std::chrono::steady_clock::now();
  const std::clock_t clockBegin = std::clock();
  const Dictionary library = load();
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  const double work = double(std::clock() - clockBegin) / CLOCKS_PER_SEC;
  const size_t after = ::mallinfo2().uordblks + ::mallinfo2().hblkhd;
  const qsizetype tracks = library.value(keys::Tracks).toDictionary().size();
  qsizetype items = 0;
  const Array playlists = library.value(keys::Playlists).toArray();
  for (const Value &playlist : playlists)
    items += playlist.toDictionary().value(keys::PlaylistItems).toArray().size();
  std::printf(
      "%s: %lld tracks, %lld playlists with %lld entries in %.2f s (%.2f s of work: %.0f tracks/s), %.0f MB "
      "(%.0f bytes a "
      "track)\n",
      road, qlonglong(tracks), qlonglong(playlists.size()), qlonglong(items), seconds, work,
      double(tracks) / work, double(after - before) / 1e6,
      double(after - before) / double(qMax<qsizetype>(1, tracks)));
  std::fflush(stdout);
  std::_Exit(0);
}

}  // namespace

int main(int argumentCount, char *arguments[]) {
  QCoreApplication application(argumentCount, arguments);
  startBenchPlatform();
  LibplistPropertyList propertyLists;
  QtFileFacts fileFacts;
  Platform services = platform();
  services.propertyLists = &propertyLists;
  services.fileFacts = &fileFacts;
  setPlatform(services);
  const int tracks = argumentCount > 1 ? std::atoi(arguments[1]) : 300'000;
  const QTemporaryDir folder;
  const QString xml = folder.filePath(QStringLiteral("sample.xml"));
  QFile file(xml);
  if (!file.open(QIODevice::WriteOnly) || file.write(librarySample(tracks)) < 0) return 1;
  file.close();
  if (!fillStore(folder.path(), xml)) return 1;
  measure("file  ", [&xml] {
    QString error;
    return iTunesInterface::getMusicLibraryDictionaryAtPathWithError(xml, &error);
  });
  measure("direct", [&folder] {
    KeeperLibraryFramework library(folder.path());
    Platform withLibrary = platform();
    withLibrary.libraryFramework = &library;
    setPlatform(withLibrary);
    return iTunesLibInterface::getMusicLibraryDictionaryWithError(nullptr);
  });
  return 0;
}
