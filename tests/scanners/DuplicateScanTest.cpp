#include "tests/scanners/ScanFixture.h"

namespace {

class DuplicateScan : public ScanFixture {};

TEST_F(DuplicateScan, SpellingsOfOneSongAreAGroupInTheLibrarysOrder) {
  add(u"A", u"Björk", u"Army of Me", 200000);
  add(u"B", u"Björk", u"Hyperballad", 200000);
  add(u"C", u"bjork", u"Hyper-Ballad", 204000);
  add(u"D", u"BJÖRK", u"The Army of Me", 195000);
  add(u"E", u"Bjork", u"hyperballad", 211000);
  EXPECT_EQ(scan(), QStringLiteral("1:A,D 2:B,C"));
  const Dictionary first = state.lists.mDuplicateSongDicts.at(0).toDictionary();
  EXPECT_FALSE(state.library.mMusicLibrarySortedTracks.at(0).toDictionary().contains(keys::DupeGroup));
  EXPECT_FALSE(first.isSame(state.library.mMusicLibrarySortedTracks.at(0).toDictionary()));
  EXPECT_TRUE(state.operation.mCompletedOperation);
  EXPECT_TRUE(logContains(
      QStringLiteral("artist:1 title:1 time:1(10) album:0 kind:0 size:0 ignorelong:1(1800 secs)")));
  EXPECT_TRUE(logContains(QStringLiteral("Completed scanLibraryForDuplicatesThread")));
}

struct DurationCase {
  int seed, candidate;
  bool together;
};

TEST_F(DuplicateScan, WindowAndLimitIncludeTheirEnds) {
  for (const auto &[seed, candidate, together] : {DurationCase{100000, 110000, true},
                                                  {100000, 110001, false},
                                                  {100000, 90000, true},
                                                  {0, 0, false},
                                                  {10000, 0, true},
                                                  {10001, 0, false},
                                                  {1800000, 1800000, true},
                                                  {1800001, 1800001, false},
                                                  {1800000, 1800001, false}}) {
    state.library.mMusicLibrarySortedTracks = Array::make();
    state.lists.mDuplicateSongDicts = Array::make();
    state.operation.mNumberOfScannedPaths = 0;
    add(u"A", u"x", u"y", seed);
    add(u"B", u"x", u"y", candidate);
    EXPECT_EQ(scan(), together ? QStringLiteral("1:A,B") : QString()) << seed << ' ' << candidate;
  }
}

TEST_F(DuplicateScan, KindAndSizeAreEachComparedByTheirOwnSetting) {
  const Dictionary first = add(u"A", u"x", u"y", 100000), second = add(u"B", u"x", u"y", 100000);
  first.set(keys::Kind, QStringLiteral("MPEG audio file"));
  second.set(keys::Kind, QStringLiteral("AAC audio file"));
  first.set(keys::Size, 5000);
  second.set(keys::Size, 5000);
  setPreference(prefs::matchFileSize, true);
  EXPECT_EQ(scan(), QStringLiteral("1:A,B"));
  setPreference(prefs::matchFileSize, false);
  setPreference(prefs::matchFileKind, true);
  state.lists.mDuplicateSongDicts = Array::make();
  state.operation.mNumberOfScannedPaths = 0;
  EXPECT_EQ(scan(), QString());
}

TEST_F(DuplicateScan, ACancelledScanSaysSo) {
  add(u"A", u"x", u"y", 100000);
  state.operation.mCancelOperation = true;
  scan();
  EXPECT_TRUE(logContains(QStringLiteral("CANCELLED scanLibraryForDuplicatesThread")));
  EXPECT_FALSE(logContains(QStringLiteral("Completed scanLibraryForDuplicatesThread")));
}

TEST_F(DuplicateScan, GroupIsAStarAroundItsSeed) {
  add(u"A", u"x", u"y", 100000);
  add(u"B", u"x", u"y", 109000);
  add(u"C", u"x", u"y", 92000);
  add(u"D", u"x", u"y", 118000);
  add(u"E", u"x", u"y", 125000);
  EXPECT_EQ(scan(), QStringLiteral("1:A,B,C 2:D,E"));
}

TEST_F(DuplicateScan, AFileThatIsGoneJoinsNoGroup) {
  for (const char16_t *pid : {u"A", u"B", u"C", u"D"}) add(pid, u"x", u"y", 100000);
  gone = {QStringLiteral("/A"), QStringLiteral("/C")};
  EXPECT_EQ(scan(), QStringLiteral("1:B,D"));
  EXPECT_EQ(asked.size(), 4) << "each file is looked for once";
}

TEST_F(DuplicateScan, SongsWithoutALikeNeverReachTheDisk) {
  add(u"A", u"x", u"y", 100000);
  add(u"B", u"x", u"z", 100000);
  add(u"C", u"x", u"y", 150000);
  EXPECT_EQ(scan(), QString());
  EXPECT_TRUE(asked.isEmpty());
}

TEST_F(DuplicateScan, DeclaredPairsStayApartAndOnlyThey) {
  for (const char16_t *pid : {u"A", u"B", u"C", u"D"}) add(pid, u"x", u"y", 100000);
  scanner.setIgnoredDuplicates([](const QString &pid) {
    return pid == u'A' ? QSet<QString>{QStringLiteral("A"), QStringLiteral("C"), QStringLiteral("D")}
                       : QSet<QString>();
  });
  EXPECT_EQ(scan(), QStringLiteral("1:A,B 2:C,D"));
}

TEST_F(DuplicateScan, AbsentAndEmptyNamesDiffer) {
  add(u"A", nullptr, u"y", 100000);
  add(u"B", nullptr, u"y", 100000);
  add(u"C", u"", u"y", 100000);
  add(u"D", u"", u"y", 100000);
  EXPECT_EQ(scan(), QStringLiteral("1:C,D"));
}

TEST_F(DuplicateScan, AnEmptyAlbumAgreesWithNoneButNotWithOne) {
  setPreference(prefs::matchAlbum, true);
  add(u"A", u"x", u"y", 100000).set(keys::Album, QString());
  add(u"B", u"x", u"y", 100000).set(keys::Album, QStringLiteral("Best"));
  add(u"C", u"x", u"y", 100000);
  add(u"D", u"x", u"y", 100000).set(keys::Album, QStringLiteral("best!"));
  EXPECT_EQ(scan(), QStringLiteral("1:A,C 2:B,D"));
}

TEST_F(DuplicateScan, WithNothingComparedAllFilesAreOneGroup) {
  for (const QString &key : {prefs::noMatchArtist, prefs::noMatchTitle, prefs::noMatchDuration}) {
    setPreference(key, true);
  }
  add(u"A", u"a", u"b", 1);
  add(u"B", nullptr, nullptr, 0);
  add(u"C", u"c", u"d", 1700000);
  EXPECT_EQ(scan(), QStringLiteral("1:A,B,C"));
}

TEST_F(DuplicateScan, ValuesOfWrongTypesAreNoTexts) {
  add(u"A", nullptr, u"y", QStringLiteral("100000")).set(keys::Artist, 7);
  add(u"B", nullptr, u"y", Array::make()).set(keys::Artist, 7);
  const Dictionary frozen = add(u"C", u"x", u"y", QStringLiteral("100000"));
  frozen.freeze();
  add(u"D", u"x", u"y", 100000.0).set(keys::simplifiedName, Dictionary::make());
  add(u"E", u"x", u"y", 1.0e300);
  state.library.mMusicLibrarySortedTracks.append(QStringLiteral("no track"));
  EXPECT_EQ(scan(), QStringLiteral("1:C,D"));
}

TEST_F(DuplicateScan, AFailingSeedIsLoggedAndCostsNoOtherGroup) {
  for (const char16_t *pid : {u"A", u"B", u"C"}) add(pid, u"x", u"y", 100000);
  scanner.setIgnoredDuplicates([](const QString &pid) {
    if (pid == u'A') throw std::runtime_error("broken list");
    return QSet<QString>();
  });
  EXPECT_EQ(scan(), QStringLiteral("1:B,C"));
  EXPECT_TRUE(logContains(QStringLiteral("EXCEPTION duplicates broken list for ")));
  EXPECT_EQ(state.operation.mNumberOfScannedPaths, 3U);
}

TEST_F(DuplicateScan, ALongScanTellsItsProgressEveryFiveMinutes) {
  for (const char16_t *pid : {u"A", u"B", u"C", u"D"}) add(pid, u"x", u"y", 100000);
  setPreference(prefs::allowedDurationVariation, 0);
  setPreference(prefs::noMatchDuration, false);
  scanner.setIgnoredDuplicates([this](const QString &) {
    time.setNow({time.now().seconds + 301.0});
    return QSet<QString>{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D")};
  });
  scan();
  EXPECT_TRUE(logContains(QStringLiteral("scanLibraryForDuplicate... 25% [1/4]")));
  EXPECT_EQ(logText().count(QStringLiteral("scanLibraryForDuplicate...")), 3);
}

TEST_F(DuplicateScan, HugeGroupsOfOneArtistStayNearLinear) {
  for (int number = 0; number < 60000; ++number) {
    const QString pid = QString::number(number);
    const QString path = u'/' + pid;
    const QString name = QStringLiteral("song %1").arg(number / 2);
    const Dictionary track = add(u"", u"Various Artists", nullptr, 180000);
    track.set(keys::Path, path);
    track.set(keys::Name, name);
    if (number % 4 == 0) gone.insert(path);
  }
  const auto begin = std::chrono::steady_clock::now();
  scanner.scanLibraryForDuplicatesThread();
  EXPECT_EQ(state.lists.mDuplicateSongDicts.size(), 30000);
  // A walk over all pairs takes 1.8 thousand million comparisons.
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

}  // namespace
