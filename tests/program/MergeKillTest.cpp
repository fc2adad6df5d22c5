#include <iostream>
#include <thread>

#include "tests/program/MergedHome.h"

namespace {

/// So many kills fall into one home; then it is merged to its end.
constexpr int kKillsOfHome = 12;

/// MERGE_KILLS in the environment asks for more instants, MERGE_SONGS for another library, MERGE_SEED for the
/// choices of an earlier run.
int numberOr(const char *name, int usual) {
  return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : usual;
}

class KilledMerge : public MergedHome {
 protected:
  enum Victim { Application, Keeper, Both };

  /// Starts a merge by the window's program or the terminal's, and kills at an instant in it.
  void mergeAndKill(int policy, Victim victim) {
    ensureKeeper();
    const bool isWindow = random() % 2;
    SCOPED_TRACE(isWindow ? "the window's program" : "the terminal's program");
    isWindow ? startWindow(policy) : startMerge(policy);
    if (random() % 8) waitForFirstSteps();
    // The window's clock is quick, and all its waits short.
    const auto instant = std::chrono::microseconds(random() % (isWindow ? 100000 : 350000));
    std::this_thread::sleep_for(instant);
    hits += program.state() == QProcess::NotRunning ? 0 : 1;
    if (victim == Both) program.kill();
    if (victim != Application) killKeeper();
    if (victim == Application) program.kill();
    waitForMerge();
  }

  const quint32 seed = quint32(numberOr("MERGE_SEED", int(std::random_device()() >> 1)));
  std::mt19937 random{seed};
  int hits = 0;
};

}  // namespace

TEST_F(KilledMerge, LosesNothingWhateverIsKilledAndGoesOnToItsEnd) {
  const int kills = numberOr("MERGE_KILLS", 12), songs = numberOr("MERGE_SONGS", 90);
  SCOPED_TRACE("MERGE_SEED=" + std::to_string(seed));
  std::cout << "MERGE_SEED=" << seed << std::endl;
  for (int kill = 0; kill < kills && !HasFailure(); ++kill) {
    SCOPED_TRACE("kill " + std::to_string(kill));
    if (kill % kKillsOfHome == 0) makeHome(songs, random);
    if (HasFailure()) break;
    mergeAndKill(kill % 2, Victim(random() % 3));
    ensureKeeper();
    expectSongsStand();
    if (kill % kKillsOfHome != kKillsOfHome - 1 && kill != kills - 1) continue;
    mergeToTheEnd(kill / kKillsOfHome % 2);
    expectNothingLost();
  }
  EXPECT_GT(hits, 0) << "each merge had ended before it was to be killed";
  std::cout << hits << " of " << kills << " kills met a merge" << std::endl;
}
