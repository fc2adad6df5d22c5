// The property-list reader beside libplist and beside a bare walk over the brackets of the same library.
// Before the cases it prints the two ratios and what a parsed library costs in memory.

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <plist/plist.h>

#include <chrono>
#include <cstdio>
#include <cstring>

#include "app/library/PropertyListPass.h"
#include "bench/LibrarySample.h"

namespace {

constexpr int kTracks = 100000;

const QByteArray &sample() {
  static const QByteArray made = librarySample(kTracks);
  return made;
}

Value parse() {
  return PropertyListPass(sample()).read();
}

/// The least that any reader does: to find each "<" and the ">" behind it.
qint64 walk() {
  const char *at = sample().begin();
  const char *const end = sample().end();
  qint64 tags = 0;
  while (const void *open = std::memchr(at, '<', size_t(end - at))) {
    at = static_cast<const char *>(open);
    const void *close = std::memchr(at, '>', size_t(end - at));
    if (!close) break;
    at = static_cast<const char *>(close) + 1;
    ++tags;
  }
  return tags;
}

plist_t parseWithLibplist() {
  plist_t root = nullptr;
  plist_from_xml(sample().constData(), quint32(sample().size()), &root);
  return root;
}

void throughput(benchmark::State &state) {
  state.SetBytesProcessed(state.iterations() * sample().size());
  state.counters["tracks/s"] =
      benchmark::Counter(double(state.iterations()) * kTracks, benchmark::Counter::kIsRate);
}

void manualReader(benchmark::State &state) {
  for (auto turn : state) {
    const Value root = parse();
    state.PauseTiming();
    benchmark::DoNotOptimize(root.toDictionary().size());
    state.ResumeTiming();
  }
  throughput(state);
}
BENCHMARK(manualReader)->Unit(benchmark::kMillisecond);

void bareWalk(benchmark::State &state) {
  for (auto turn : state) benchmark::DoNotOptimize(walk());
  throughput(state);
}
BENCHMARK(bareWalk)->Unit(benchmark::kMillisecond);

template <class Job>
double seconds(Job job) {
  const auto start = std::chrono::steady_clock::now();
  job();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The shortest of some turns. What a turn made is kept until its time is taken.
template <class Job, class Free>
double shortest(int turns, Job job, Free release) {
  double best = 1e9;
  for (int turn = 0; turn < turns; ++turn) {
    decltype(job()) made{};
    best = std::min(best, seconds([&] { made = job(); }));
    release(made);
  }
  return best;
}

void printRatios() {
  const double bytes = double(sample().size());
  const size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
  Value root = parse();
  const size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
  std::printf("library: %d tracks, %.0f bytes each; parsed %.0f bytes each\n", kTracks, bytes / kTracks,
              double(after - before) / kTracks);
  root = {};
  const double own = shortest(5, parse, [](Value &) {});
  const double bare = shortest(5, walk, [](qint64) {});
  const double other = shortest(3, parseWithLibplist, [](plist_t made) { plist_free(made); });
  std::printf("own reader %.3f s (%.0f MB/s, %.2f us a track), libplist %.3f s, bare walk %.3f s\n", own,
              bytes / own / 1e6, own / kTracks * 1e6, other, bare);
  std::printf("%.1f times as fast as libplist; %.1f times the bare walk\n", other / own, own / bare);
}

}  // namespace

int main(int argc, char **argv) {
  benchmark::Initialize(&argc, argv);
  printRatios();
  benchmark::RunSpecifiedBenchmarks();
}
