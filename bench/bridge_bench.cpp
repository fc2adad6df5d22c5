#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <chrono>

#include "bench/BenchPlatform.h"
#include "bridge/iTunesInterface.h"
#include "keeper/library/StoreBatch.h"
#include "platform/Platform.h"
#include "platform/qt/LibplistPropertyList.h"
#include "platform/qt/QtFileFacts.h"
#include "tests/fixtures/KeeperHost.h"

// Operations on Music Keeper in this process, on a store whose changes are durable.
namespace {

struct Keeper {
  Keeper() {
    startBenchPlatform();
    static LibplistPropertyList propertyLists;
    static QtFileFacts fileFacts;
    Platform services = platform();
    services.fileFacts = &fileFacts;
    services.propertyLists = &propertyLists;
    setPlatform(services);
    host = std::make_unique<KeeperHost>(folder.path());
    services.scriptHost = host.get();
    services.bundle.resourceFolder = QStringLiteral(TALLYFEN_RESOURCE_FOLDER);
    setPlatform(services);
  }
  QTemporaryDir folder;
  std::unique_ptr<KeeperHost> host;
};

double seconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void rebuild(benchmark::State &state) {
  Keeper keeper;
  const int count = int(state.range(0));
  QStringList tracks;
  {
    StoreBatch batch(keeper.host->store());
    for (int i = 0; i < count; ++i) tracks += keeper.host->addTrack(QStringLiteral("t%1").arg(i));
    batch.commit();
  }
  double longest = 0;
  qint64 calls = 0;
  for (auto _ : state) {
    state.PauseTiming();
    const QString list = keeper.host->addPlaylist(QStringLiteral("L"), tracks);
    const QString name = QStringLiteral("ZZZ_TF-") + list;
    state.ResumeTiming();
    for (bool isDone = false; !isDone; ++calls) {
      const double start = seconds();
      const QString answer =
          iTunesInterface::incrementalRebuildPlaylist(list, {tracks[7], tracks[count - 1]}, tracks[3], name)
              .value_or(QStringLiteral("error:"));
      longest = std::max(longest, seconds() - start);
      isDone = answer.startsWith(u"Done");
      if (!isDone && !answer.startsWith(u"copied")) return state.SkipWithError(qPrintable(answer));
    }
  }
  state.counters["calls"] = benchmark::Counter(double(calls), benchmark::Counter::kAvgIterations);
  state.counters["longest_ms"] = longest * 1000;
}
BENCHMARK(rebuild)->Arg(750)->Arg(7500)->Unit(benchmark::kMillisecond);

void rename(benchmark::State &state) {
  Keeper keeper;
  const QString pid = keeper.host->addTrack(QStringLiteral("t"));
  int number = 0;
  for (auto _ : state) {
    const auto done = iTunesInterface::changeValueInTrackWithPIDOfTypeToValue(
        pid, QStringLiteral("Artist"), QStringLiteral("The Artist %1").arg(++number));
    if (done != QStringLiteral("1")) return state.SkipWithError("the name was not changed");
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(rename)->Unit(benchmark::kMicrosecond);

void version(benchmark::State &state) {
  Keeper keeper;
  for (auto _ : state) {
    if (!iTunesInterface::versionString()) return state.SkipWithError("no answer");
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(version)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
