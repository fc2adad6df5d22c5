#include "support/Preferences.h"
#include "tests/fixtures/MergeWorld.h"
#include "values/Keys.h"

// Faults of all kinds on generated libraries: none costs audio, a song, a place in a playlist or a play.
namespace {

class MergeFaults : public MergeWorld {
 protected:
  void setPolicy(int policy) { setPreference(prefs::unkeptActionPolicy, policy); }
  /// Scans and merges until nothing is left to be merged.
  void mergeToTheEnd() {
    keeper.intercept = {};
    session.failRecycle({});
    scan();
    state.merge.report.clear();
    merge();
    EXPECT_TRUE(report().failures.empty()) << qPrintable(report().failures.front().reason);
    EXPECT_TRUE(state.operation.cancelOperationReason().isEmpty());
  }
  /// Cancels behind so many scripts.
  void cancelAfter(int scripts) {
    const auto left = std::make_shared<int>(scripts);
    keeper.intercept = [this, left](const QString &) -> std::optional<ScriptOutcome> {
      if (--*left == 0) state.operation.mCancelOperation = true;
      return std::nullopt;
    };
  }
  std::mt19937 random{11};
};

}  // namespace

TEST_F(MergeFaults, EachPolicyMergesARandomLibraryWithoutLoss) {
  for (const int policy : {0, 1, 2}) {
    setPolicy(policy);
    state.merge.report.clear();
    addGroups(40, 2, quint32(policy) + 1);
    const Holdings before = holdings();
    scan();
    merge();
    expectNothingLost(before);
    EXPECT_TRUE(report().failures.empty()) << qPrintable(report().failures.front().reason);
    EXPECT_TRUE(state.lists.mDuplicateSongDicts.isEmpty());
  }
}

TEST_F(MergeFaults, ACancelAtAnyMomentLosesNothingAndTheRestCanBeMerged) {
  for (int round = 0; round < 12; ++round) {
    setPolicy(round % 2);
    addGroups(4, 1, 100 + quint32(round));
    const Holdings before = holdings();
    scan();
    cancelAfter(1 + int(random() % 30));
    merge();
    expectNothingLost(before);
    mergeToTheEnd();
    expectNothingLost(before);
    EXPECT_TRUE(state.lists.mDuplicateSongDicts.isEmpty());
  }
}

TEST_F(MergeFaults, FilesThatVanishOrCannotBeTrashedCostNoOtherSong) {
  for (int round = 0; round < 6; ++round) {
    setPolicy(round % 2);
    addGroups(4, 1, 200 + quint32(round));
    scan();
    // The user deletes one of the files behind our back; what is in it is not ours to keep.
    const Array &rows = state.lists.mDuplicateSongDicts;
    QFile::remove(
        rows.at(qsizetype(random() % quint64(rows.size()))).toDictionary().value(keys::Path).toText());
    const Holdings before = holdings();
    if (round > 2) session.failRecycle(u"refused"_qs);
    merge();
    expectNothingLost(before);
    mergeToTheEnd();
    expectNothingLost(before);
  }
}

TEST_F(MergeFaults, AKeeperThatEndsInTheMiddleLosesNothing) {
  for (int round = 0; round < 8; ++round) {
    addGroups(4, 1, 300 + quint32(round));
    const Holdings before = holdings();
    scan();
    const auto left = std::make_shared<int>(1 + int(random() % 25));
    keeper.intercept = [this, left](const QString &) -> std::optional<ScriptOutcome> {
      if (--*left > 0) return std::nullopt;
      // What notices that the application is gone cancels the run.
      state.operation.mCancelOperation = true;
      return ScriptOutcome{{}, ScriptFailure{-600, u"gone"_qs, 0, 0}};
    };
    merge();
    mergeToTheEnd();
    expectNothingLost(before);
  }
}

TEST_F(MergeFaults, NamesOfFullLengthAndFilesInOtherFoldersAreKept) {
  const QString longName = QString(251, u'n') + u".mp3"_qs, wide = QString(83, QChar(0x3042)) + u".mp3"_qs;
  otherFolders = {folder(u"elsewhere"_qs), folder(u"home/Trash"_qs)};
  setPolicy(1);
  for (const QString &name : {longName, wide}) {
    const qint64 group = name == longName ? 1 : 2;
    addSong(group);
    for (const QString &place : {u"elsewhere/a"_qs, u"elsewhere/b"_qs})
      addSong(group, {.path = folder(place + u'/' + name)});
  }
  const Holdings before = holdings();
  scan();
  merge();
  expectNothingLost(before);
  EXPECT_EQ(QDir(unkeptFolder()).entryList(QDir::Files).size(), 4);
  EXPECT_TRUE(report().failures.empty());
}

TEST_F(MergeFaults, APlaylistThatSomebodyChangesMeanwhileKeepsTheChange) {
  addGroups(6, 1, 400);
  const QString added = addSong(50);
  scan();
  Holdings before = holdings();
  const QString list =
      keeper.tell(u"return persistent ID of (first user playlist whose name is \"List 0\")"_qs);
  bool isDone = false;
  keeper.intercept = [&](const QString &source) -> std::optional<ScriptOutcome> {
    if (isDone || !source.contains(u"incrementalRebuildPlaylist"_qs)) return std::nullopt;
    isDone = true;
    keeper.tell(
        u"duplicate (first track of library playlist 1 whose persistent ID is \"%1\") to (first user "
        "playlist whose persistent ID is \"%2\")"_qs.arg(added, list));
    return std::nullopt;
  };
  merge();
  ASSERT_TRUE(isDone);
  before.playlists[u"List 0"_qs].append(50);
  expectNothingLost(before);
}
