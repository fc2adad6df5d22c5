#include <random>

#include "tests/bridge/BridgeFixture.h"
#include "tests/bridge/MortalKeeper.h"

// The rebuild of playlists, step by step through the real handler.
using namespace iTunesInterface;

namespace {

const QString kPrefix = u"ZZZ_TF"_qs;

class Rebuild : public BridgeTest {
 protected:
  Rebuild() : keeper(folder(u"library"_qs)), mortal(keeper) {
    services.scriptHost = &mortal;
    setPlatform(services);
    for (int i = 0; i < 40; ++i) tracks += keeper.addTrack(u"t%1"_qs.arg(i));
  }

  // Persistent IDs, each of the first tracks often.
  QStringList randomEntries(int count) {
    QStringList entries;
    for (int i = 0; i < count; ++i) entries += tracks[int(random() % 20)];
    return entries;
  }
  QStringList replaced(QStringList entries, const QStringList &old, const QString &kept) const {
    for (QString &pid : entries) {
      if (old.contains(pid)) pid = kept;
    }
    return entries;
  }
  QStringList namesOf(const QStringList &entries) const {
    QStringList names;
    for (const QString &pid : entries) names += u"t%1"_qs.arg(tracks.indexOf(pid));
    return names;
  }
  QString tempName(const QString &list) const { return kPrefix + u'-' + list; }
  std::optional<QString> step(const QString &list, const QStringList &old, const QString &kept) {
    return incrementalRebuildPlaylist(list, old, kept, tempName(list));
  }
  // As the repair does: until it is done or has failed.
  QString rebuild(const QString &list, const QStringList &old, const QString &kept) {
    for (steps = 1; steps < 100; ++steps) {
      const QString answer = step(list, old, kept).value_or(u"error: nothing"_qs);
      if (answer.startsWith(u"Done") || answer.startsWith(u"broken:") || answer.startsWith(u"error:"))
        return answer;
    }
    return u"never done"_qs;
  }
  // The entries of the playlist of a name; null if there is none.
  QStringList entriesNamed(const QString &name) {
    const QString pid =
        keeper.tell(u"return persistent ID of (first user playlist whose name is \"%1\")"_qs.arg(name));
    return pid.startsWith(u"error") ? QStringList() : keeper.namesIn(pid);
  }
  QStringList temporaryNames() { return keeper.playlistNames().filter(kPrefix); }

  KeeperHost keeper;
  MortalKeeper mortal;
  QStringList tracks;
  std::mt19937 random{7};
  int steps = 0;
};

}  // namespace

TEST_F(Rebuild, EveryEntryKeepsItsPlaceAndTheOldTracksBecomeTheNewOne) {
  const QString jazz = keeper.addFolder(u"Jazz"_qs);
  for (const int count : {1, 199, 200, 201, 450}) {
    QStringList entries = randomEntries(count);
    // Tracks to be replaced at both ends, one of them twice in a row.
    const QStringList old{tracks[3], tracks[30]};
    const QString kept = tracks[5];
    entries.front() = tracks[3];
    entries.back() = tracks[30];
    keeper.addPlaylist(u"Before"_qs, {}, jazz);
    const QString list = keeper.addPlaylist(u"A \"list\" |@ 100%"_qs, entries, jazz);
    keeper.addPlaylist(u"After"_qs, {}, jazz);
    const QStringList namesBefore = keeper.playlistNames();
    EXPECT_TRUE(rebuild(list, old, kept).startsWith(u"Done")) << count;
    EXPECT_EQ(keeper.namesIn(list), namesOf(replaced(entries, old, kept)));
    EXPECT_EQ(steps, (count + 199) / 200 + 1);
    EXPECT_EQ(keeper.playlistNames(), namesBefore);
    EXPECT_TRUE(rebuild(list, old, kept).startsWith(u"Done"));
    EXPECT_EQ(steps, 1);
  }
  EXPECT_EQ(keeper.tell(u"return fixed indexing"_qs), u"false"_qs);
}

TEST_F(Rebuild, WhereNothingIsToBeReplacedNothingIsTouched) {
  const QString list = keeper.addPlaylist(u"L"_qs, {tracks[0], tracks[1]});
  const QString empty = keeper.addPlaylist(u"E"_qs);
  const qint64 stamp = keeper.store().changeStamp();
  for (const QString &each : {list, empty}) {
    EXPECT_TRUE(rebuild(each, {tracks[2]}, tracks[3]).startsWith(u"Done"));
    EXPECT_TRUE(rebuild(each, {}, tracks[3]).startsWith(u"Done"));
  }
  EXPECT_EQ(keeper.store().changeStamp(), stamp);
}

TEST_F(Rebuild, WhatCannotBeRebuiltIsAnError) {
  const QStringList entries{tracks[0], tracks[1]};
  const QString list = keeper.addPlaylist(u"L"_qs, entries);
  for (const QString &source :
       {keeper.addSmartPlaylist(u"S"_qs, entries), keeper.addFolder(u"F"_qs), u"FEED"_qs})
    EXPECT_TRUE(rebuild(source, {tracks[0]}, tracks[1]).startsWith(u"error: "));
  EXPECT_TRUE(rebuild(list, {tracks[0]}, u"00000000DEADBEEF"_qs).startsWith(u"error: "));
  EXPECT_EQ(keeper.namesIn(list), namesOf(entries));
}

TEST_F(Rebuild, EntriesThatCannotBeCopiedAreNamedBeforeTheListIsTouched) {
  const QStringList entries = randomEntries(150) + QStringList{tracks[31], tracks[32]} + randomEntries(100);
  const QString list = keeper.addPlaylist(u"My|@list"_qs, entries);
  mortal.uncopyable = {tracks[31], tracks[32]};
  EXPECT_EQ(rebuild(list, {tracks[0]}, tracks[1]),
            u"broken:|@My/@list|@%1|@%2"_qs.arg(tracks[31], tracks[32]));
  EXPECT_EQ(keeper.namesIn(list), namesOf(entries));
  // A slow application, or one that ends, is none of the entries' fault.
  for (const qint64 fault :
       {scriptErrors::kTimedOut, scriptErrors::kConnectionInvalid, scriptErrors::kApplicationNotRunning}) {
    mortal.refusal = fault;
    removePlaylistsWithNamesStartingWith(kPrefix);
    const QString answer = step(list, {tracks[0]}, tracks[1]).value_or(u"nothing"_qs);
    EXPECT_TRUE(answer.startsWith(u"error: ")) << qPrintable(answer);
    EXPECT_EQ(answer.contains(u"timed out"), fault == scriptErrors::kTimedOut);
    EXPECT_FALSE(mortal.hasFixedIndexing());
  }
  mortal.uncopyable.clear();
  EXPECT_TRUE(rebuild(list, {tracks[0]}, tracks[1]).startsWith(u"Done"));
  EXPECT_EQ(keeper.namesIn(list), namesOf(replaced(entries, {tracks[0]}, tracks[1])));
}

TEST_F(Rebuild, ACopyInAnotherOrderIsBegunAnew) {
  const QStringList entries = randomEntries(250);
  const QString list = keeper.addPlaylist(u"L"_qs, entries);
  mortal.reversesNextCopy = true;
  EXPECT_EQ(step(list, {entries[0]}, tracks[30]), u"started again"_qs);
  EXPECT_TRUE(temporaryNames().isEmpty());
  EXPECT_TRUE(rebuild(list, {entries[0]}, tracks[30]).startsWith(u"Done"));
  EXPECT_EQ(keeper.namesIn(list), namesOf(replaced(entries, {entries[0]}, tracks[30])));
}

TEST_F(Rebuild, AnApplicationThatDiesAtAnyChangeLosesNoEntryAndTheNextCallsGoOn) {
  const QStringList old{tracks[3], tracks[4]};
  const QString kept = tracks[30];
  bool hasSurvived = false;
  for (int life = 0; !hasSurvived; ++life) {
    ASSERT_LT(life, 20);
    for (const bool isGivenUp : {false, true}) {
      QStringList entries = randomEntries(430);
      entries[7] = tracks[3];
      const QStringList before = namesOf(entries), after = namesOf(replaced(entries, old, kept));
      const QString list = keeper.addPlaylist(u"L"_qs, entries);
      mortal.dieAfter(life);
      while (!mortal.isDead() && !hasSurvived) {
        const QString answer = step(list, old, kept).value_or(u"error:"_qs);
        hasSurvived = answer.startsWith(u"Done");
        EXPECT_FALSE(answer.startsWith(u"broken:")) << qPrintable(answer);
      }
      const QStringList left = keeper.namesIn(list);
      EXPECT_TRUE(left == before || left == after || entriesNamed(tempName(list) + u"-swap"_qs) == after)
          << life;
      mortal.revive();
      if (isGivenUp) {
        removePlaylistsWithNamesStartingWith(kPrefix);
        EXPECT_TRUE(keeper.namesIn(list) == before || keeper.namesIn(list) == after) << life;
      } else {
        EXPECT_TRUE(rebuild(list, old, kept).startsWith(u"Done"));
        EXPECT_EQ(keeper.namesIn(list), after) << life;
      }
      EXPECT_TRUE(temporaryNames().isEmpty() && !mortal.hasFixedIndexing()) << life;
    }
  }
  EXPECT_FALSE(mortal.hasCopiedUnfixed);
}

TEST_F(Rebuild, ChangesOfTheUserInBetweenAreKept) {
  const QStringList old{tracks[3]};
  const QString kept = tracks[30];
  const auto append = [&](const QString &list, const QString &pid) {
    EXPECT_EQ(addTrackWithPIDToPlaylistWithPID(pid, list), u"Done"_qs);
  };
  QStringList entries = randomEntries(420);
  entries[0] = tracks[3];
  const QString list = keeper.addPlaylist(u"L"_qs, entries);
  // While it is copied: one at the front goes, one at the end comes.
  step(list, old, kept);
  keeper.tell(u"delete track 2 of (first user playlist whose persistent ID is \"%1\")"_qs.arg(list));
  append(list, tracks[3]);
  entries.removeAt(1);
  entries += tracks[3];
  EXPECT_TRUE(rebuild(list, old, kept).startsWith(u"Done"));
  EXPECT_EQ(keeper.namesIn(list), namesOf(replaced(entries, old, kept)));
}

TEST_F(Rebuild, ACopyThatWasLeftIsPutInFrontOfWhatTheUserHasAdded) {
  const QString kept = tracks[30];
  const QStringList added{tracks[35], tracks[3]};
  QStringList stale = randomEntries(30);
  stale[5] = tracks[3];
  stale[6] = tracks[4];
  const QStringList copy = replaced(stale, {tracks[4]}, kept);
  const QString dropped, swap = u"-swap"_qs;
  const struct {
    QString suffix;
    QStringList present, restored;
  } cases[] = {
      {dropped, {}, {}},
      {dropped, stale + added, stale + added},
      {swap, {}, copy},
      {swap, added, copy + added},
      {swap, stale, stale},
      {swap, copy + added, copy + added},
      {swap, added + copy, added + copy},
      // An end between filling behind the user's own and taking these away in front.
      {swap, added + copy + added, copy + added},
      {swap, copy.first(9), copy},
      {swap, copy.first(29) + QStringList{tracks[35]}, copy.first(29) + QStringList{tracks[35]}},
      {swap, copy.mid(1) + QStringList{tracks[35], tracks[36]}, copy + QStringList{tracks[35], tracks[36]}},
  };
  for (size_t i = 0; i < std::size(cases); ++i) {
    for (const bool isGivenUp : {false, true}) {
      const QString list = keeper.addPlaylist(u"M"_qs, cases[i].present);
      keeper.addPlaylist(tempName(list) + cases[i].suffix, copy);
      if (isGivenUp) {
        removePlaylistsWithNamesStartingWith(kPrefix);
      } else {
        EXPECT_TRUE(rebuild(list, {tracks[3]}, kept).startsWith(u"Done")) << i;
      }
      const QStringList &restored = cases[i].restored;
      EXPECT_EQ(keeper.namesIn(list), namesOf(isGivenUp ? restored : replaced(restored, {tracks[3]}, kept)))
          << i << isGivenUp;
      EXPECT_TRUE(temporaryNames().isEmpty()) << i;
    }
  }
}

TEST_F(Rebuild, OnlyTemporaryPlaylistsAreDeleted) {
  keeper.addSmartPlaylist(u"ZZZ_TF smart"_qs);
  keeper.addPlaylist(u"zzz_tf"_qs);
  keeper.addPlaylist(u"My ZZZ_TF"_qs);
  for (int i = 0; i < 5; ++i) keeper.addPlaylist(kPrefix + QString::number(i), {tracks[i]});
  // The copy of a playlist that is gone may be all that is left of it.
  keeper.addPlaylist(u"ZZZ_TF-00000000DEADBEEF-swap"_qs, {tracks[0]});
  removePlaylistsWithNamesStartingWith({});
  removePlaylistsWithNamesStartingWith(kPrefix);
  EXPECT_EQ(keeper.playlistNames(), (QStringList{u"ZZZ_TF smart"_qs, u"zzz_tf"_qs, u"My ZZZ_TF"_qs,
                                                 u"ZZZ_TF-00000000DEADBEEF-swap"_qs}));
}
