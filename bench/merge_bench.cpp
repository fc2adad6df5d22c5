// Merges through the keeper's interpreter on a real store with real files: groups without playlists, groups
// whose tracks stand in playlists of 500, and what a list of 50,000 rows adds to a group.
//
//   merge_bench [groups without playlists] [groups in playlists]

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "repairs/MergePlan.h"
#include "support/Preferences.h"
#include "tests/fixtures/MergeWorld.h"
#include "values/Keys.h"

namespace {

/// Wall time, and the processors' time of this process: what others do meanwhile does not count in that.
struct Spent {
  double wall = 0, processor = 0;
};

Spent spent(const std::function<void()> &work) {
  const auto now = [] {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
  };
  const double wall = now(), processor = double(std::clock()) / CLOCKS_PER_SEC;
  work();
  return {now() - wall, double(std::clock()) / CLOCKS_PER_SEC - processor};
}

class BenchWorld : public MergeWorld {
 public:
  void TestBody() override {}

  /// Two tracks a group, with plays.
  void addPairs(int count) {
    for (int i = 0; i < count; ++i) {
      ++last;
      for (int copy = 0; copy < 2; ++copy)
        pids += addSong(last, {.name = u"Song %1"_qs.arg(last), .plays = 1 + copy});
    }
  }
  void addPlaylistsOf(int entries) {
    for (qsizetype first = 0; first < pids.size(); first += entries)
      keeper.addPlaylist(u"List %1"_qs.arg(first), pids.mid(first, entries));
  }
  void addUnmarkedRows(int count) {
    for (int i = 0; i < count; ++i) {
      const Dictionary row = Dictionary::make();
      for (int key = 0; key < 30; ++key) row.set(Key(u"Key %1"_qs.arg(key)), key);
      row.set(keys::DupeGroup, last + 1 + i / 2);
      state.lists.mDuplicateSongDicts.append(row);
    }
  }
  double measure(const char *what, int groupCount) {
    time.setPatience(0.001);
    const Spent took = spent([this] { merge(); });
    std::printf("%-34s %6d groups  %7.1f groups/s  (%.2f ms a group, processor %.2f ms)\n", what, groupCount,
                groupCount / took.wall, 1000 * took.wall / groupCount, 1000 * took.processor / groupCount);
    const MergeReport::Contents done = report();
    for (const MergeFailure &failure : done.failures) std::printf("  %s\n", qPrintable(failure.reason));
    if (qsizetype(done.groups.size()) != groupCount) std::printf("  merged: %zu\n", done.groups.size());
    std::fflush(stdout);
    return took.processor / groupCount;
  }
  void rows() { scan(); }

 private:
  QStringList pids;
  qint64 last = 0;
};

}  // namespace

int main(int count, char **arguments) {
  ::testing::InitGoogleTest(&count, arguments);
  const int groups = count > 1 ? std::atoi(arguments[1]) : 2000;
  const int listed = count > 2 ? std::atoi(arguments[2]) : 200;
  {
    BenchWorld world;
    world.addPairs(groups);
    world.rows();
    world.measure("without playlists", groups);
  }
  {
    BenchWorld world;
    world.addPairs(listed);
    world.addPlaylistsOf(500);
    world.rows();
    world.measure("in playlists of 500", listed);
  }
  double few = 0;
  for (const int rows : {0, 50'000}) {
    BenchWorld world;
    world.addPairs(200);
    world.rows();
    world.addUnmarkedRows(rows);
    const double each = world.measure(rows ? "beside 50,000 rows" : "beside no other rows", 200);
    if (!rows) few = each;
    if (rows) std::printf("50,000 rows add %.2f ms to a group\n", 1000 * (each - few));
  }
}
