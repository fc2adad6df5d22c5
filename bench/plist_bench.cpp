// The property-list reader beside libplist and beside a bare walk over the brackets of the same library.
// Before the cases it prints the two ratios and what a parsed library costs in memory.

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <plist/plist.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

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

/// What this process has had of the processor, in seconds: what others do meanwhile counts for little.
double processorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

/// How long a job takes in a process of its own, which starts with an unused heap as a program does that
/// loads a library once. What the job made is never freed.
template <class Job>
double secondsInChild(Job job) {
  int ends[2];
  if (pipe(ends) != 0) std::abort();
  if (fork() == 0) {
    const double start = processorSeconds();
    auto *made = new auto(job());
    benchmark::DoNotOptimize(made);
    const double took = processorSeconds() - start;
    _exit(write(ends[1], &took, sizeof took) == sizeof took ? 0 : 1);
  }
  double took = 0;
  if (read(ends[0], &took, sizeof took) != sizeof took) std::abort();
  wait(nullptr);
  close(ends[0]);
  close(ends[1]);
  return took;
}

void printRatios() {
  const double bytes = double(sample().size());
  double own = 1e9, bare = 1e9, other = 1e9;
  for (int turn = 0; turn < 5; ++turn) {
    own = std::min(own, secondsInChild(parse));
    bare = std::min(bare, secondsInChild(walk));
    other = std::min(other, secondsInChild(parseWithLibplist));
  }
  std::printf("own reader %.3f s (%.0f MB/s, %.2f us a track), libplist %.3f s, bare walk %.3f s\n", own,
              bytes / own / 1e6, own / kTracks * 1e6, other, bare);
  std::printf("%.1f times as fast as libplist; %.1f times the bare walk\n", other / own, own / bare);
  const size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
  const Value root = parse();
  const size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
  std::printf("%d tracks of %.0f bytes each take %.0f bytes each\n", kTracks, bytes / kTracks,
              double(after - before) / kTracks);
}

}  // namespace

int main(int argc, char **argv) {
  benchmark::Initialize(&argc, argv);
  printRatios();
  benchmark::RunSpecifiedBenchmarks();
}
