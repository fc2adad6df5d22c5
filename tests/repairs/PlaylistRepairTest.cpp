#include "repairs/PlaylistRepair.h"

#include "app/state/AppState.h"
#include "app/state/ProgressSheet.h"
#include "keeper/library/EntryTable.h"
#include "keeper/library/LibraryStore.h"
#include "keeper/library/PlaylistTable.h"
#include "platform/keeper/KeeperLibraryFramework.h"
#include "repairs/PlaylistMembers.h"
#include "repairs/UserPlaylists.h"
#include "support/Preferences.h"
#include "tests/bridge/BridgeFixture.h"
#include "tests/bridge/MortalKeeper.h"
#include "tests/fixtures/ScriptedView.h"
#include "values/Keys.h"
#include "values/PersistentID.h"

namespace {

const QString kPrefix = u"ZZZ_TF"_qs;

/// The keeper's store, read directly; what a thread asks of it can be made to fail.
struct FailingLibrary : KeeperLibraryFramework {
  using KeeperLibraryFramework::KeeperLibraryFramework;
  std::optional<std::vector<LibraryPlaylist>> allPlaylists() override {
    if (hangs && !platform().mainLoop->isMainThread()) platform().clock->sleep(30);
    return hasLists ? KeeperLibraryFramework::allPlaylists() : std::nullopt;
  }
  bool visitItems(quint64 list, bool places,
                  const std::function<bool(const LibraryPlaylistItem &)> &each) override {
    return hasItems && KeeperLibraryFramework::visitItems(list, places, each);
  }
  std::atomic<bool> hasLists = true, hasItems = true, hangs = false;
};

/// Real scripts, a real store and direct access to it.
class PlaylistRepairTest : public BridgeTest {
 protected:
  PlaylistRepairTest() : keeper(folder(u"library"_qs)), library(folder(u"library"_qs)) {
    services.scriptHost = &keeper;
    services.libraryFramework = &library;
    setPlatform(services);
    for (int i = 0; i < 10; ++i) tracks += keeper.addTrack(u"t%1"_qs.arg(i));
    keeper.intercept = [this](const QString &script) -> std::optional<ScriptOutcome> {
      if (script.contains(u"incrementalRebuildPlaylist(\"")) ++steps;
      return beforeScript ? beforeScript(script) : std::nullopt;
    };
  }

  QStringList pidsOf(const QString &numbers) const {
    QStringList pids;
    for (const QChar number : numbers) pids += tracks[number.digitValue()];
    return pids;
  }
  /// A playlist of tracks by their numbers.
  QString addList(const QString &numbers, const QString &name = u"L"_qs) {
    return keeper.addPlaylist(name, pidsOf(numbers));
  }
  /// A playlist with a mark of its own, which holds all tracks.
  QString addMarked(Key key, const Value &mark) {
    const Dictionary keys = Dictionary::make();
    keys.set(keys::Name, u"Marked"_qs);
    keys.set(key, mark);
    const PlaylistRow row = keeper.store().playlists().make(keys);
    keeper.store().entries().append(row, keeper.store().tracks().rows());
    return hexPersistentID(keeper.store().playlists().info(row)->persistentID);
  }
  QString numbersIn(const QString &list) { return keeper.namesIn(list).join(QString()).remove(u't'); }
  std::optional<QString> replace(const QString &old, int kept) {
    return repair.doPlaylistReplaceOfSongPIDsWithSongPID(pidsOf(old), tracks[kept]);
  }
  /// The names of the playlists that were built anew, appended to, and failed.
  QString touched() const {
    QStringList rebuilt, appended, failed;
    for (const auto &playlist : repair.lastReplaced().rebuilt) rebuilt += playlist.name;
    for (const auto &playlist : repair.lastReplaced().appended) appended += playlist.name;
    for (const auto &failure : repair.lastReplaced().failed) failed += failure.playlist.name;
    return QStringList{rebuilt.join(u' '), appended.join(u' '), failed.join(u' ')}.join(u"; "_qs);
  }
  static std::optional<ScriptOutcome> answerOf(const QString &text) {
    return ScriptedHost::resultOf(ScriptDescriptor::ofText(text));
  }
  /// From here on neither direct access nor a library file tells of the playlists.
  void makeListsUnavailable() {
    library.hasItems = false;
    state.library.mLastLibraryModifiedDate = Date{seconds() + 1e6};
  }

  KeeperHost keeper;
  FailingLibrary library;
  ScriptedView view;
  AppState state{view};
  ProgressSheet sheet{state};
  PlaylistRepair repair{state, sheet};
  QStringList tracks;
  std::function<std::optional<ScriptOutcome>(const QString &)> beforeScript;
  int steps = 0;
};

Dictionary track(const QString &artist, const QString &name, const QString &pid = {}) {
  const Dictionary made = Dictionary::make();
  made.set(keys::Artist, artist);
  made.set(keys::Name, name);
  made.set(keys::PersistentID, pid);
  return made;
}

}  // namespace

TEST_F(PlaylistRepairTest, EveryOrdinaryPlaylistHasTheNewTrackInTheOldOnesPlaces) {
  const QString both = addList(u"1023012"_qs), repeats = addList(u"111"_qs), withNew = addList(u"9192"_qs);
  const QString nested = keeper.addPlaylist(u"N"_qs, pidsOf(u"31"_qs), keeper.addFolder(u"F"_qs));
  const QString without = addList(u"0345"_qs), empty = addList({});
  const QStringList others{keeper.addSmartPlaylist(u"S"_qs, pidsOf(u"12"_qs)),
                           addMarked(keys::DistinguishedKind, 19), addMarked(keys::Visible, false),
                           addList(u"12"_qs, u"Duplicates Not Kept"_qs), addList(u"12"_qs, u"ZZZ_TF x"_qs)};
  QStringList before;
  for (const QString &other : others) before += numbersIn(other);
  EXPECT_TRUE(replace(u"12"_qs, 9)->startsWith(u"Done"));
  EXPECT_EQ((QStringList{numbersIn(both), numbersIn(repeats), numbersIn(withNew), numbersIn(nested),
                         numbersIn(without), numbersIn(empty)}),
            (QStringList{u"9093099"_qs, u"999"_qs, u"9999"_qs, u"39"_qs, u"0345"_qs, u""_qs}));
  for (int i = 0; i < others.size(); ++i) EXPECT_EQ(numbersIn(others[i]), before[i]) << i;
  EXPECT_EQ(keeper.playlistNames().filter(kPrefix), QStringList{u"ZZZ_TF x"_qs});
  steps = 0;
  EXPECT_EQ(replace(u"12"_qs, 9), std::nullopt) << "nothing is left to be done";
  EXPECT_EQ(steps, 0);
  EXPECT_EQ(touched(), u"; ; "_qs);
}

TEST_F(PlaylistRepairTest, AHugePlaylistGetsTheNewTrackAtItsEnd) {
  const QString huge = addList(QString(7500, u'1') + u'0', u"H"_qs), small = addList(u"101"_qs, u"S"_qs);
  EXPECT_EQ(replace(u"1"_qs, 9)->left(4), u"Done"_qs);
  EXPECT_EQ(numbersIn(huge), QString(7500, u'1') + u"09"_qs);
  EXPECT_EQ(numbersIn(small), u"909"_qs);
  EXPECT_EQ(touched(), u"S; H; "_qs);
  setPreference(prefs::reportMinorErrors, true);
  EXPECT_EQ(replace(u"1"_qs, 9), u"error: cannot replace instances of song in playlist"_qs);
  EXPECT_EQ(numbersIn(huge).size(), 7502);
  EXPECT_EQ(touched(), u"; ; H"_qs);
  setPreference(prefs::reportMinorErrors, false);
  addList(QString(7501, u'1'), u"I"_qs);
  bool hasFailed = false;
  beforeScript = [&](const QString &script) -> std::optional<ScriptOutcome> {
    if (hasFailed || !script.contains(u"addTrackPIDToiTunesPlaylistPID(\"")) return std::nullopt;
    hasFailed = true;
    return answerOf(u"error: no"_qs);
  };
  EXPECT_EQ(replace(u"1"_qs, 9)->left(4), u"Done"_qs) << "the last playlist's word";
  EXPECT_EQ(touched(), u"; I; H"_qs);
}

TEST_F(PlaylistRepairTest, WhatSomebodyChangesBetweenTwoStepsStays) {
  QString numbers;
  for (int i = 0; i < 45; ++i) numbers += u"0123456789"_qs;
  const struct {
    const char16_t *change;
    QString expected;
  } cases[] = {{u"duplicate (track 6 of pl) to pl", numbers + u'5'},
               {u"duplicate (track 2 of pl) to pl", numbers + u'1'},
               {u"delete track 1 of pl", numbers.mid(1)},
               {u"delete (every track of pl)", {}}};
  for (const auto &[change, expected] : cases) {
    for (int step = 1; step <= 4; ++step) {
      const QString list = addList(numbers);
      steps = 0;
      beforeScript = [&](const QString &script) -> std::optional<ScriptOutcome> {
        if (steps == step && script.contains(u"incrementalRebuildPlaylist(\""))
          keeper.tell(u"set pl to (first user playlist whose persistent ID is \"%1\")\n%2"_qs.arg(
              list, QString::fromUtf16(change)));
        return std::nullopt;
      };
      EXPECT_EQ(replace(u"1"_qs, 9)->left(4), u"Done"_qs);
      EXPECT_EQ(numbersIn(list), QString(expected).replace(u'1', u'9')) << step;
      EXPECT_TRUE(keeper.playlistNames().filter(kPrefix).isEmpty());
      keeper.tell(u"delete every user playlist whose name is \"L\""_qs);
    }
  }
}

TEST_F(PlaylistRepairTest, EachSourceHasItsOwnBoundaryOfAHugePlaylist) {
  const QString larger = addList(QString(7501, u'1'), u" a \n"_qs),
                equal = addList(QString(7500, u'1'), u"b"_qs);
  addList(QString(7499, u'1'));
  addMarked(keys::DistinguishedKind, 19);
  const QHash<QString, QString> one{{larger, u"a"_qs}};
  EXPECT_EQ(repair.hugePlaylistInfoUsingApplescript(true), one);
  makeListsUnavailable();
  EXPECT_EQ(repair.hugePlaylistInfoUsingApplescript(true).keys().size(), 2);
  library.hasLists = false;
  EXPECT_EQ(repair.hugePlaylistInfoUsingApplescript(false).value(equal), u"b"_qs);
  EXPECT_TRUE(logContains(u"falling back to getPlaylistNamesAndPIDsAboveLength"_qs));
}

TEST_F(PlaylistRepairTest, ATrackThatCannotBeCarriedOverEndsItAndIsNamed) {
  MortalKeeper mortal(keeper);
  services.scriptHost = &mortal;
  setPlatform(services);
  mortal.uncopyable = pidsOf(u"3"_qs);
  const QString fine = addList(u"012"_qs), refused = addList(u"1345"_qs, u"Mine"_qs),
                later = addList(u"1"_qs);
  const QString answer = replace(u"1"_qs, 9).value_or(QString());
  EXPECT_EQ(answer, u"broken:|@Mine|@"_qs + tracks[3]);
  EXPECT_EQ(numbersIn(fine) + u' ' + numbersIn(refused) + u' ' + numbersIn(later), u"092 1345 1"_qs);
  EXPECT_TRUE(keeper.playlistNames().filter(kPrefix).isEmpty());

  state.library.mMusicLibrarySortedTracks = Array::make();
  for (const char16_t *name : {u"A", u"B"})
    state.library.mMusicLibrarySortedTracks.append(track(u"X"_qs, QString::fromUtf16(name), tracks[3]));
  const Dictionary told = repair.playListReplaceErrorDictionaryFromString(answer);
  EXPECT_EQ(told.value(keys::playlists).toArray().at(0).toText(), u"Mine"_qs);
  EXPECT_EQ(told.value(keys::tracks).toArray().size(), 2);
  EXPECT_EQ(told.value(keys::tracksummaries).toArray().at(0).toText(), u"X: B"_qs);
  EXPECT_EQ(repair.playListReplaceErrorDictionaryFromString(u"broken:|@M|@0"_qs).size(), 1);
  for (const char16_t *text : {u"broken:|@M", u"error:|@M|@0", u""})
    EXPECT_TRUE(repair.playListReplaceErrorDictionaryFromString(QString::fromUtf16(text)).isNull());
}

TEST_F(PlaylistRepairTest, OnlyATimeoutIsTriedAgain) {
  addList(u"1"_qs);
  const struct {
    QStringList answers;
    int asked;
    bool isTidied;
  } cases[] = {
      {QStringList(10, u"copied"_qs) + QStringList{u"Done"_qs}, 11, false},
      {{u"error: timed out"_qs, u"broken: timed out"_qs, u"Done, 3"_qs}, 3, false},
      {{u"copied"_qs, u"error: no"_qs, u"Done"_qs}, 2, true},
      {{u"broken:|@M|@0"_qs}, 1, true},
      {{QString()}, 1, true},
  };
  for (const auto &[answers, asked, isTidied] : cases) {
    bool tidied = false;
    steps = 0;
    beforeScript = [&, all = answers](const QString &script) -> std::optional<ScriptOutcome> {
      tidied |= script.contains(u"incrementalPlaylistDelete"_qs);
      if (!script.contains(u"incrementalRebuildPlaylist(\"")) return std::nullopt;
      const QString next = all.value(steps - 1);
      return next.isNull() ? ScriptOutcome() : answerOf(next);
    };
    const QString last = answers[asked - 1];
    EXPECT_EQ(replace(u"1"_qs, 9), last.isNull() ? u"error: unknown"_qs : last);
    EXPECT_EQ(steps, asked) << qPrintable(last);
    EXPECT_EQ(tidied, isTidied) << qPrintable(last);
  }
}

TEST_F(PlaylistRepairTest, ACancelLeavesEachPlaylistWholeAndTheRestUntouched) {
  QString numbers;
  for (int i = 0; i < 50; ++i) numbers += u"0123456789"_qs;
  for (int cancelled = 0; cancelled < 4; ++cancelled) {
    const QString list = addList(numbers), later = addList(u"1"_qs);
    state.operation.mCancelOperation = false;
    steps = 0;
    beforeScript = [&](const QString &) {
      if (steps >= cancelled) state.operation.mCancelOperation = true;
      return std::nullopt;
    };
    EXPECT_FALSE(replace(u"1"_qs, 9).value_or(QString()).startsWith(u"error"));
    EXPECT_EQ(steps, cancelled);
    EXPECT_EQ(numbersIn(list), numbers);
    EXPECT_EQ(numbersIn(later), u"1"_qs);
    iTunesInterface::removePlaylistsWithNamesStartingWith(kPrefix);
    EXPECT_EQ(numbersIn(list), numbers);
    EXPECT_TRUE(keeper.playlistNames().filter(kPrefix).isEmpty());
    keeper.tell(u"delete every user playlist whose name is \"L\""_qs);
  }
}

TEST_F(PlaylistRepairTest, APlaylistThatAKilledRunLeftEmptyIsFilledFromItsCopy) {
  const QString empty = addList({}), begun = addList(u"012"_qs);
  addList(u"909"_qs, kPrefix + u'-' + empty + u"-swap"_qs);
  addList(u"09"_qs, kPrefix + u'-' + begun);
  ASSERT_TRUE(state.changes.updateJustPlaylists());
  repair.putBackCopies();
  EXPECT_EQ(numbersIn(empty), u"909"_qs);
  EXPECT_TRUE(UserPlaylists::userPlaylistsContainASongWithPID(state.changes.playlists(), pidsOf(u"9"_qs)));
  EXPECT_EQ(keeper.playlistNames().filter(kPrefix), QStringList{kPrefix + u'-' + begun})
      << "a copy that is not whole yet is gone on with";
}

TEST_F(PlaylistRepairTest, WithEachHangMoreIsLeftAlone) {
  const struct {
    int restarts;
    bool hasLocked, canList;
    const char16_t *after;
    bool quickCheck;
  } cases[] = {
      {9, false, true, u"090", true}, {0, true, true, u"090", true},   {1, true, true, u"010", true},
      {1, true, false, u"090", true}, {2, true, false, u"090", false}, {3, true, false, u"0109", false},
  };
  for (const auto &[restarts, hasLocked, canList, after, quickCheck] : cases) {
    const QString list = addList(u"010"_qs);
    state.merge.mScriptLockedBeforeRestart = hasLocked;
    state.merge.mNumberOfNoProgressRestarts = restarts;
    library.hasItems = true;
    if (!canList) makeListsUnavailable();
    EXPECT_EQ(repair.canFindPlaylists(), !hasLocked || restarts == 0);
    (void)replace(u"1"_qs, 9);
    EXPECT_EQ(numbersIn(list), QString::fromUtf16(after)) << restarts;
    EXPECT_TRUE(logContains(u"hugePlaylistInfoUsingApplescript:%1"_qs.arg(int(quickCheck))));
    keeper.tell(u"delete every user playlist whose name is \"L\""_qs);
  }
}

TEST_F(PlaylistRepairTest, WithoutDirectAccessNoPlaylistIsFound) {
  const QString list = addList(u"1"_qs);
  EXPECT_TRUE(repair.canFindPlaylists());
  library.hasLists = library.hasItems = false;
  EXPECT_EQ(replace(u"1"_qs, 9), std::nullopt);
  EXPECT_TRUE(logContains(u" ... doPlaylistReplace fallback to XML because AppleScript 'error: unknown'"_qs));
  makeListsUnavailable();
  EXPECT_EQ(replace(u"1"_qs, 9), u"error: unknown"_qs);
  EXPECT_TRUE(logContains(u"*** cannot get playlists from XML either, must give up."_qs));
  EXPECT_EQ(numbersIn(list), u"1"_qs);
  services.libraryFramework = nullptr;
  setPlatform(services);
  iTunesLibInterface::reset();
  EXPECT_FALSE(repair.canFindPlaylists());
}

TEST_F(PlaylistRepairTest, TheLongestPlaylistIsCountedWhoeverAnswers) {
  addList(QString(7, u'1'));
  addList(QString(8, u'1'), u"Duplicates Not Kept"_qs);
  addList(QString(9, u'1'), u"ZZZ_TF-1"_qs);
  addMarked(keys::DistinguishedKind, 19);
  EXPECT_EQ(repair.maximumUserPlaylistTracks(), 7);
  library.hasLists = false;
  // The script comes through the main thread, which waits for it.
  beforeScript = [](const QString &script) -> std::optional<ScriptOutcome> {
    if (script.contains(u"getMaxPlaylistLength")) platform().mainLoop->postAndWait([] {});
    return std::nullopt;
  };
  EXPECT_EQ(repair.maximumUserPlaylistTracks(), 7);
  EXPECT_FALSE(view.progressShown || state.merge.mScriptLockedBeforeRestart);
  beforeScript = [](const QString &script) -> std::optional<ScriptOutcome> {
    return script.contains(u"getMaxPlaylistLength") ? answerOf(u"-1"_qs) : std::nullopt;
  };
  state.library.mMusicLibrary = Dictionary::make();
  EXPECT_EQ(repair.maximumUserPlaylistTracks(), 0) << "no list is at hand";
  EXPECT_TRUE(state.merge.mScriptLockedBeforeRestart.exchange(false));

  library.hasLists = library.hangs = true;
  const double begin = seconds();
  EXPECT_EQ(repair.maximumUserPlaylistTracks(), 7);
  EXPECT_NEAR(seconds() - begin, 10, 0.5);
  EXPECT_TRUE(view.progressShown && state.merge.mScriptLockedBeforeRestart);
  time.run(60);
}

TEST_F(PlaylistRepairTest, OnlyWhatTheUserFillsByHandIsTheUsers) {
  for (const Key key : {keys::SmartInfo, keys::Folder, keys::DistinguishedKind, keys::Podcasts,
                        keys::PartyShuffle, keys::Music, keys::Master, keys::Visible}) {
    const Dictionary marked = Dictionary::make();
    marked.set(key, false);
    EXPECT_EQ(UserPlaylists::isUserPlaylist(marked), key == keys::Visible) << qPrintable(key.text());
  }
  for (const char16_t *name : {u"Adopted Songs", u"Songs Being Converted", u"ZZZ_TF-1"})
    EXPECT_TRUE(UserPlaylists::shouldIgnorePlaylistWithName(QString::fromUtf16(name)));
  for (const char16_t *name : {u"zzz_tf", u"", u"My ZZZ_TF"})
    EXPECT_FALSE(UserPlaylists::shouldIgnorePlaylistWithName(QString::fromUtf16(name)));
  addList(u"01"_qs);
  addList(u"2"_qs, u"Adopted Songs"_qs);
  keeper.addSmartPlaylist(u"S"_qs, pidsOf(u"3"_qs));
  const Array playlists = iTunesInterface::getDirectPlaylists();
  PlaylistMembers members;
  for (int asked = 0; asked < 3; ++asked) {
    EXPECT_TRUE(members.containASongWithPID(playlists, pidsOf(u"21"_qs)));
    EXPECT_FALSE(members.containASongWithPID(playlists, pidsOf(u"23"_qs) + QStringList{{}}));
  }
  EXPECT_FALSE(members.containASongWithPID(Array::make(), pidsOf(u"21"_qs)));
}

TEST_F(PlaylistRepairTest, ASummaryNamesTenOfFifteenTracksAndCutsLongOnes) {
  const Array listed = Array::make();
  listed.append(track(u" A "_qs, u"B "_qs));
  listed.append(track({}, QString(45, u'x')));
  listed.append(track(QString(46, u'x'), u" "_qs));
  while (listed.size() < 14) listed.append(track({}, {}));
  const QString begin = u"\nA: B"_qs + QString(90, u'x') + u"..."_qs;
  EXPECT_EQ(PlaylistRepair::summaryOfTrackDicts(listed), begin + u"Unknown"_qs.repeated(11));
  listed.append(track({}, {}));
  EXPECT_EQ(PlaylistRepair::summaryOfTrackDicts(listed),
            begin + u"Unknown"_qs.repeated(7) + u"\n… and 5 more"_qs);
}
