#include <QDateTime>
#include <stdexcept>

#include "bridge/iTunesInterface.h"
#include "repairs/ArtworkCopy.h"
#include "repairs/GroupRows.h"
#include "repairs/MergeJournal.h"
#include "support/Preferences.h"
#include "tests/fixtures/MergeWorld.h"
#include "tools/demo/Picture.h"
#include "values/Keys.h"

// The world is not as the plan has it when a step comes to it: then rows, files and tracks stay.
namespace {

/// A trash that can be looked at as it is asked, and that can lie.
class WatchedTrash : public RecordingWorkspace {
 public:
  using RecordingWorkspace::RecordingWorkspace;
  bool recycle(const QString &path, QString *error) override {
    if (onRecycle) onRecycle(path);
    return claims ? *claims : RecordingWorkspace::recycle(path, error);
  }
  std::function<void(const QString &)> onRecycle;
  std::optional<bool> claims;
};

/// A library that opens, but does not tell which playlists hold a track.
class SilentLibrary : public KeeperLibraryFramework {
 public:
  using KeeperLibraryFramework::KeeperLibraryFramework;
  std::optional<std::set<quint64>> playlistsContaining(quint64) override { return std::nullopt; }
};

class MergeSafety : public MergeWorld {
 protected:
  MergeSafety() {
    services.workspace = &trash;
    trash.running = session.running;
    setPlatform(services);
  }
  void setPolicy(UnkeptPolicy policy) { setPreference(prefs::unkeptActionPolicy, int(policy)); }
  /// Has the test look at each script with a text in it; an outcome takes its place.
  void onScript(const QString &text, const std::function<std::optional<ScriptOutcome>()> &look) {
    keeper.intercept = [text, look](const QString &source) {
      return source.contains(text) ? look() : std::nullopt;
    };
  }
  void removeInApplication(const QString &pid) {
    keeper.tell(u"delete (first track of library playlist 1 whose persistent ID is \"%1\")"_qs.arg(pid));
  }
  std::vector<UnkeptFate> fates() const {
    std::vector<UnkeptFate> told;
    const MergeReport::Contents contents = report();
    for (const MergedGroup &group : contents.groups) {
      for (const MergedGroup::Unkept &unkept : group.unkept) told.push_back(unkept.fate);
    }
    return told;
  }
  static ScriptOutcome text(const QString &answer) { return {ScriptDescriptor::ofText(answer), {}}; }

  void setLibrary(LibraryFramework *library) {
    services.libraryFramework = library;
    setPlatform(services);
    iTunesLibInterface::reset();
  }

  WatchedTrash trash{folder(u"home/Trash"_qs)};
  SilentLibrary silent{folder(u"library"_qs)};
};

}  // namespace

TEST_F(MergeSafety, ARemovalThatFailedOrThatNobodyAnsweredCostsNoFile) {
  const struct {
    ScriptOutcome outcome;
    bool isDoneFirst;
    size_t rowsLeft;
  } cases[] = {{text(u"error: no"_qs), false, 0},
               {text(u"error: timed out: x"_qs), false, 2},
               {{{}, ScriptFailure{-609, u"gone"_qs, 0, 0}}, false, 2},
               {{{}, ScriptFailure{-609, u"gone"_qs, 0, 0}}, true, 0},
               {{{}, {}}, false, 2}};
  setPolicy(UnkeptPolicy::Folder);
  qint64 group = 0;
  for (const auto &one : cases) {
    ++group;
    const QString kept = addSong(group, {.plays = 1}), unkept = addSong(group, {.plays = 2});
    const QString source = pathOf(unkept);
    const Holdings before = holdings();
    scan();
    state.merge.report.clear();
    bool isAsked = false;
    onScript(u"removeTrackWithPID"_qs, [&]() -> std::optional<ScriptOutcome> {
      if (std::exchange(isAsked, true)) return std::nullopt;
      if (one.isDoneFirst) removeInApplication(unkept);
      return one.outcome;
    });
    merge();
    // What was done is done, whatever was heard of it.
    EXPECT_EQ(QFile::exists(source), !one.isDoneFirst) << group;
    EXPECT_EQ(rowsOfGroup(group).size(), one.rowsLeft) << group;
    EXPECT_EQ(report().failures.empty(), one.isDoneFirst) << group;
    keeper.intercept = {};
    if (!one.rowsLeft) scan();
    state.merge.report.clear();
    merge();
    expectNothingLost(before);
    EXPECT_EQ(tracksOfGroup(group), QStringList{kept});
    EXPECT_FALSE(QFile::exists(source)) << group;
    EXPECT_TRUE(report().failures.empty() && rowsOfGroup(group).empty()) << group;
  }
}

TEST_F(MergeSafety, WhereTheWorldIsNotAsPlannedNothingOfTheGroupGoesAndTheNextOneIsMerged) {
  enum class Fault {
    KeptTrackGone,
    KeptTrackGoneWithoutPlays,
    PlaysStay,
    Playlists,
    NoAnswer,
    Exception,
    OnePID
  };
  for (const Fault fault : {Fault::KeptTrackGone, Fault::KeptTrackGoneWithoutPlays, Fault::PlaysStay,
                            Fault::Playlists, Fault::NoAnswer, Fault::Exception, Fault::OnePID}) {
    SCOPED_TRACE(int(fault));
    const qint64 group = 2 * int(fault) + 1;
    const QString kept = addSong(group, {.plays = 1}), unkept = addSong(group, {.plays = 2});
    addSong(group + 1);
    addSong(group + 1);
    const QStringList paths{pathOf(kept), pathOf(unkept)};
    if (fault == Fault::Playlists || fault == Fault::NoAnswer)
      keeper.addPlaylist(u"L%1"_qs.arg(group), {unkept});
    scan();
    mark(kept, unkept);
    const Array rows = Array::make();
    for (const Dictionary &row : rowsOfGroup(group)) rows.append(row);
    for (const Dictionary &row : rowsOfGroup(group + 1)) rows.append(row);
    state.lists.mDuplicateSongDicts = rows;
    state.merge.report.clear();
    setPreference(prefs::noMergePlayedInfo, fault == Fault::KeptTrackGoneWithoutPlays);
    state.merge.mScriptLockedBeforeRestart = fault == Fault::Playlists;
    state.merge.mNumberOfNoProgressRestarts = fault == Fault::Playlists ? 1 : 0;
    if (fault == Fault::KeptTrackGone || fault == Fault::KeptTrackGoneWithoutPlays) removeInApplication(kept);
    if (fault == Fault::OnePID) rowsOfGroup(group)[1].set(keys::PersistentID, kept);
    keeper.intercept = [&](const QString &source) -> std::optional<ScriptOutcome> {
      if (!source.contains(unkept)) return std::nullopt;
      if (fault == Fault::Exception && source.contains(u"copyInfo("_qs)) throw std::runtime_error("thrown");
      if (fault == Fault::PlaysStay && source.contains(u"mergePlayed("_qs)) return text(u"error: no"_qs);
      return std::nullopt;
    };
    if (fault == Fault::NoAnswer) setLibrary(&silent);
    merge();
    setLibrary(&framework);
    keeper.intercept = {};
    for (const QString &path : paths) EXPECT_TRUE(QFile::exists(path));
    EXPECT_TRUE(tracksOfGroup(group).contains(fault == Fault::OnePID ? kept : unkept));
    EXPECT_EQ(rowsOfGroup(group).empty(), fault == Fault::OnePID);
    EXPECT_EQ(tracksOfGroup(group + 1).size(), 1);
    EXPECT_EQ(state.operation.mCurrentThreadAction, 0);
    EXPECT_TRUE(state.operation.mCompletedOperation);
    EXPECT_EQ(report().failures.empty(), fault == Fault::OnePID);
    // As far as it came it is told.
    EXPECT_EQ(report().groups.size(), 2u);
    // The first finished row is a sign that the application answers.
    EXPECT_EQ(state.merge.mNumberOfNoProgressRestarts, 0);
    state.merge.mScriptLockedBeforeRestart = false;
  }
}

TEST_F(MergeSafety, WhatStopsARunStopsItBeforeTheRows) {
  enum class Fault { Broken, Error, KeptFileGone, Journal };
  const struct {
    Fault fault;
    QString reason;
  } cases[] = {{Fault::Broken, u"broken:|@L|@x"_qs},
               {Fault::Error, u"error: no"_qs},
               {Fault::KeptFileGone, u"missingError:"_qs},
               {Fault::Journal, u"error: journal: "_qs}};
  qint64 group = 0;
  for (const auto &one : cases) {
    SCOPED_TRACE(qPrintable(one.reason));
    ++group;
    const QString kept = addSong(group), unkept = addSong(group, {.plays = 2});
    const QString keptPath = pathOf(kept), unkeptPath = pathOf(unkept);
    keeper.addPlaylist(u"L"_qs, {unkept});
    scan();
    const QString journalPath = MergeJournal::defaultPath();
    if (one.fault == Fault::Journal) {
      QFile::remove(journalPath);
      QDir().mkpath(journalPath);
    }
    onScript(u"incrementalRebuildPlaylist"_qs, [&]() -> std::optional<ScriptOutcome> {
      if (one.fault == Fault::Broken || one.fault == Fault::Error) return text(one.reason);
      if (one.fault == Fault::KeptFileGone) QFile::rename(keptPath, keptPath + u".away"_qs);
      return std::nullopt;
    });
    merge();
    keeper.intercept = {};
    EXPECT_TRUE(state.operation.cancelOperationReason().startsWith(one.reason))
        << qPrintable(state.operation.cancelOperationReason());
    EXPECT_TRUE(QFile::exists(unkeptPath));
    EXPECT_EQ(tracksOfGroup(group).size(), 2);
    EXPECT_EQ(rowsOfGroup(group).size(), 2u);
    EXPECT_FALSE(state.operation.mCompletedOperation && one.fault == Fault::Journal);
    removeInApplication(unkept);
  }
}

TEST_F(MergeSafety, ATrashThatLiesOrAFileThatCannotBeDeletedStopsTheRun) {
  const struct {
    bool claims, becomesFolder, deletes;
    const char *reason;
  } cases[] = {{true, false, false, "trashError"},
               {false, false, false, "trashError"},
               {false, true, true, "deleteError:"},
               {true, false, true, ""},
               {false, false, true, ""}};
  qint64 group = 0;
  for (const auto &one : cases) {
    addSong(++group);
    const QString unkept = addSong(group), path = pathOf(unkept);
    scan();
    state.merge.report.clear();
    setPreference(prefs::noStopForTrashFailure, one.deletes);
    trash.claims = one.claims;
    trash.onRecycle = [&](const QString &asked) {
      if (!one.becomesFolder) return;
      EXPECT_TRUE(QFile::rename(asked, asked + u".away"_qs) && QDir().mkpath(asked));
    };
    merge();
    const QString reason = QString::fromLatin1(one.reason);
    EXPECT_EQ(state.operation.cancelOperationReason(), one.becomesFolder ? reason + path : reason);
    EXPECT_EQ(tracksOfGroup(group).size(), reason.isEmpty() ? 1 : 2);
    EXPECT_EQ(QFile::exists(path), !reason.isEmpty());
    const std::vector<UnkeptFate> told = fates();
    EXPECT_EQ(std::count(told.begin(), told.end(), UnkeptFate::Deleted), reason.isEmpty() ? 1 : 0);
    if (!reason.isEmpty()) removeInApplication(unkept);
  }
}

TEST_F(MergeSafety, BeforeTheFirstFileGoesTheKeptTrackHasAllThatItIsToHave) {
  const QString kept = addSong(1, {.name = u"Old"_qs, .plays = 3}),
                info = addSong(1, {.name = u"New"_qs, .plays = 4});
  const QString other = addSong(1, {.plays = 5});
  const QString list = keeper.addPlaylist(u"L"_qs, {other, kept, info});
  scan();
  mark(kept, info);
  int asked = 0;
  trash.onRecycle = [&](const QString &) {
    if (++asked > 1) return;
    EXPECT_EQ(plays(kept), 12);
    EXPECT_EQ(keeper.trackValue(kept, keys::Name).toText(), u"New"_qs);
    EXPECT_EQ(keeper.namesIn(list), (QStringList{u"New"_qs, u"New"_qs, u"New"_qs}));
    EXPECT_EQ(tracksOfGroup(1).size(), 3);
  };
  merge();
  EXPECT_EQ(asked, 2);
}

TEST_F(MergeSafety, PreferencesLeaveOutPlaysAndPlaylists) {
  setPreference(prefs::noMergePlayedInfo, true);
  setPreference(prefs::noIntelligentPlaylistHandling, true);
  const QString kept = addSong(1, {.plays = 1}), unkept = addSong(1, {.plays = 2});
  const QString list = keeper.addPlaylist(u"L"_qs, {unkept});
  scan();
  merge();
  EXPECT_EQ(plays(kept), 1);
  EXPECT_TRUE(keeper.namesIn(list).isEmpty());
  EXPECT_EQ(tracksOfGroup(1), QStringList{kept});
  EXPECT_TRUE(report().failures.empty());
}

TEST_F(MergeSafety, AFileOfSeveralTracksGoesWithTheLastOfThemAndThePlanSaysSo) {
  QDir().mkpath(folder(u"music/real"_qs));
  ASSERT_TRUE(QFile::link(folder(u"music/real"_qs), folder(u"linked"_qs)));
  qint64 group = 0;
  for (const UnkeptPolicy policy : {UnkeptPolicy::Trash, UnkeptPolicy::Folder}) {
    setPolicy(policy);
    ++group;
    addSong(group);
    const QString twice = pathOf(addSong(group));
    addSong(group, {.path = twice, .makesFile = false});
    const QString elsewhere = folder(u"music/real/%1.mp3"_qs.arg(group));
    addSong(group, {.path = elsewhere});
    addSong(group + 10, {.path = folder(u"linked/%1.mp3"_qs.arg(group)), .makesFile = false});
    const Holdings before = holdings();
    scan();
    state.merge.report.clear();
    const UnkeptFate last = policy == UnkeptPolicy::Trash ? UnkeptFate::Trashed : UnkeptFate::Moved;
    const std::vector<UnkeptFate> expected{UnkeptFate::Shared, last, UnkeptFate::Shared};
    std::vector<UnkeptFate> planned;
    const MergePlan plan = makeMergePlan(state, MergeSettings::fromPreferences());
    for (const GroupPlan::Unkept &unkept : plan.groups.at(0).unkept) planned.push_back(unkept.fate);
    EXPECT_EQ(plan.unkeptFiles(), 1);
    merge();
    expectNothingLost(before);
    EXPECT_EQ(planned, expected);
    EXPECT_EQ(fates(), expected);
    EXPECT_FALSE(QFile::exists(twice));
    EXPECT_TRUE(QFile::exists(elsewhere));
    EXPECT_TRUE(report().failures.empty());
  }
}

TEST_F(MergeSafety, PlaylistsThatNameTracksByNumberAreNotLostWithoutDirectAccessUnlessTheUserWantsIt) {
  addSong(1);
  const QString unkept = addSong(1);
  scan();
  rowsOfGroup(1)[1].set(keys::TrackID, 77);
  const Dictionary list = Dictionary::make(), entry = Dictionary::make();
  const Array lists = Array::make(), entries = Array::make();
  entry.set(keys::TrackID, 77);
  entries.append(entry);
  list.set(keys::Name, u"L"_qs);
  list.set(keys::PlaylistItems, entries);
  lists.append(list);
  state.library.mMusicLibrary.set(keys::Playlists, lists);
  services.libraryFramework = nullptr;
  setPlatform(services);
  iTunesLibInterface::reset();
  const MergePlan plan = makeMergePlan(state, MergeSettings::fromPreferences());
  ASSERT_EQ(plan.groups.at(0).playlists.size(), 1u);
  EXPECT_EQ(plan.groups[0].playlists[0].name, u"L"_qs);
  for (const bool isWanted : {false, true}) {
    state.merge.mMergesWithoutPlaylists = isWanted;
    state.merge.report.clear();
    merge();
    EXPECT_EQ(tracksOfGroup(1).contains(unkept), !isWanted);
    EXPECT_EQ(report().failures.empty(), isWanted);
  }
}

TEST_F(MergeSafety, ALaterRunKnowsWhichTracksAreGone) {
  const QString kept = addSong(1), other = addSong(2);
  const QString path = pathOf(addSong(1));
  addSong(2, {.path = path, .makesFile = false});
  scan();
  for (const Dictionary &row : rowsOfGroup(2)) row.remove(keys::markInfo);
  merge();
  EXPECT_TRUE(QFile::exists(path));
  mark(other, other);
  merge();
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_EQ(tracksOfGroup(1) + tracksOfGroup(2), (QStringList{kept, other}));
}

TEST_F(MergeSafety, AGroupThatIsStoppedBehindItsInformationCanBeMergedAgain) {
  const QString kept = addSong(1), info = addSong(1), other = addSong(1);
  scan();
  mark(kept, info);
  onScript(u"removeTrackWithPID(\"%1"_qs.arg(other), [&] {
    state.operation.mCancelOperation = true;
    return std::nullopt;
  });
  merge();
  keeper.intercept = {};
  ASSERT_EQ(rowsOfGroup(1).size(), 2u);
  // A run that was stopped proves nothing.
  EXPECT_FALSE(report().after);
  merge();
  EXPECT_TRUE(rowsOfGroup(1).empty());
}

TEST_F(MergeSafety, ATotalThatIsLostIsAFailureAndOneThatGrewIsNone) {
  const struct {
    const char *statement, *lost;
  } cases[] = {{"set played count of t to 1", "Plays, all tracks together"},
               {"set skipped count of t to 1", "Skips, all tracks together"},
               {"delete (first track of user playlist \"L\")", "Songs in your playlists"},
               {"set played count of t to 9", ""},
               {"duplicate t to user playlist \"L\"", ""}};
  const QString bystander = addSong(99, {.plays = 5, .skips = 5});
  keeper.addPlaylist(u"L"_qs, {bystander, bystander});
  qint64 group = 0;
  for (const auto &one : cases) {
    addSong(++group);
    addSong(group);
    scan();
    state.merge.report.clear();
    bool isAsked = false;
    onScript(u"removeTrackWithPID"_qs, [&]() -> std::optional<ScriptOutcome> {
      if (std::exchange(isAsked, true)) return std::nullopt;
      const QString done = keeper.tell(
          u"set t to (first track of library playlist 1 whose persistent ID is \"%1\")\n%2"_qs.arg(
              bystander, QString::fromLatin1(one.statement)));
      EXPECT_FALSE(done.startsWith(u"error"_qs)) << qPrintable(done);
      return std::nullopt;
    });
    merge();
    ASSERT_TRUE(report().after) << one.statement;
    QStringList lost;
    const MergeReport::Contents contents = report();
    for (const MergeFailure &failure : contents.failures) lost += failure.title;
    EXPECT_EQ(lost.join(u','), QString::fromLatin1(one.lost)) << one.statement;
  }
  EXPECT_GT(state.merge.countingSteps, 0);
}

TEST_F(MergeSafety, TheRowsOfAGroupAreFoundAsOneLookAtAllRowsFindsThem) {
  std::mt19937 random(7);
  for (const bool isInOrder : {true, false}) {
    const Array list = Array::make();
    qint64 number = 0;
    for (int i = 0; i < 300; ++i) {
      number = isInOrder ? number + qint64(random() % 3 == 0) : qint64(random() % 100);
      const Dictionary row = Dictionary::make();
      row.set(keys::DupeGroup, number);
      if (random() % 3 == 0) row.set(keys::markInfo, true);
      if (random() % 3 == 0) row.set(keys::markAudio, true);
      list.append(row);
    }
    state.lists.mDuplicateSongDicts = list;
    const GroupRows index(state);
    for (int i = 0; i < 50; ++i)
      index.remove(list.at(qint64(random() % quint64(list.size() - 1))).toDictionary());
    std::vector<qint64> marked;
    for (qint64 each = 1; each <= index.highest(); ++each) {
      bool hasInfo = false, hasAudio = false;
      for (const Dictionary &row : rowsOfGroup(each)) {
        hasInfo |= row.contains(keys::markInfo);
        hasAudio |= row.contains(keys::markAudio);
      }
      if (hasInfo && hasAudio) marked.push_back(each);
      EXPECT_EQ(index.rowsOf(each).size(), rowsOfGroup(each).size());
    }
    // What left the list meanwhile was marked when it was looked at.
    EXPECT_TRUE(std::includes(index.marked().begin(), index.marked().end(), marked.begin(), marked.end()));
    EXPECT_EQ(index.remove(Dictionary::make()), 0x7fffffffffffffff);
  }
}

TEST_F(MergeSafety, AFileThatHasThePicturesIsNotWritten) {
  const QByteArray cover = makeCover(16, 0x112233, 0x445566);
  const QString from = pathOf(addSong(1, {.artwork = cover})), to = pathOf(addSong(1, {.artwork = cover}));
  const QDateTime date = QDateTime::fromSecsSinceEpoch(1000);
  QFile file(to);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(date, QFileDevice::FileModificationTime));
  file.close();
  EXPECT_TRUE(copyArtworkFromSongAtPathToSongAtPathReplace(from, to, true));
  EXPECT_EQ(QFileInfo(to).lastModified(), date);
}
