#include "scanners/DuplicateGroups.h"

#include "tests/scanners/DuplicateGroupsFixture.h"

namespace {

TEST_F(DuplicateGroupsTest, StripesAlternateBetweenGroups) {
  setRows("A1 B1 C2 D2 E2 F5 G5");
  groups.setStripesForDupesFromIndex(0);
  EXPECT_EQ(stripes(), QStringLiteral("--###--"));
  setRows("A4 B4 C5");
  groups.setStripesForDupesFromIndex(-1);
  EXPECT_EQ(stripes(), QStringLiteral("##-"));
}

TEST_F(DuplicateGroupsTest, StripesGoOnFromTheRowBeforeAndNeverPastTheEnd) {
  setRows("A1 B1 C2 D3");
  groups.setStripesForDupesFromIndex(4);
  groups.setStripesForDupesFromIndex(9);
  EXPECT_EQ(stripes(), QStringLiteral("????"));
  row(1).set(keys::UIStripe, true);
  groups.setStripesForDupesFromIndex(2);
  EXPECT_EQ(stripes(), QStringLiteral("?#-#"));
  row(0).set(keys::UIStripe, true);
  groups.setStripesForDupesFromIndex(1);
  EXPECT_EQ(stripes(), QStringLiteral("##-#"));
  setRows("");
  groups.setStripesForDupesFromIndex(0);
}

TEST_F(DuplicateGroupsTest, AGroupKeepsOneRowForEachMark) {
  const struct {
    const char *name, *before;
    Key mark;
    int place;
    bool value, answer;
    const char *after;
  } cases[] = {
      {"the first click gives both marks", "-- -- --", keys::markInfo, 2, true, true, "-- ia --"},
      {"the first click on audio too", "-- -- --", keys::markAudio, 1, true, true, "ia -- --"},
      {"a mark moves", "ia i- --", keys::markInfo, 2, true, true, "-a i- --"},
      {"a mark that was there changes nothing else", "-a i- --", keys::markInfo, 2, true, false, "-a i- --"},
      {"clearing the only mark repairs nothing", "-a -- --", keys::markInfo, 1, false, false, "-a -- --"},
      {"another key completes audio alone", "-- -- --", keys::Compilation, 3, true, true, "-- -- -a"},
      {"no such row", "-- -- --", keys::markInfo, 6, true, false, "-- -- --"},
      {"no such row before the first", "-- -- --", keys::markInfo, -1, true, false, "-- -- --"},
  };
  for (const auto &test : cases) {
    setRows("X1 A2 B2 C2 Y3");
    const QString others = QStringLiteral("ia %1 i-");
    setMarks(qPrintable(others.arg(QString::fromUtf8(test.before))));
    if (test.value && test.place >= 0 && test.place < 5) row(test.place).set(test.mark, true);
    EXPECT_EQ(groups.validateDuplicatesForIdentifierPreferringRowNewValue(test.mark, test.place, test.value),
              test.answer)
        << test.name;
    EXPECT_EQ(marks(), others.arg(QString::fromUtf8(test.after))) << test.name;
  }
}

TEST_F(DuplicateGroupsTest, TheTopGroupIsPostponedUnderANewNumber) {
  const struct {
    const char *before, *postponed, *after;
  } cases[] = {
      {"A1 B1 C2 D2 E4 F4", "C2 D2 E4 F4 A5 B5", "A5 B5 C2 D2 E4 F4"},
      {"A3 B3", "A4 B4", "A4 B4"},
      {"A1 B2 C2", "A3 B2 C2", "A3 B2 C2"},
      {"", "", ""},
  };
  for (const auto &[before, postponed, after] : cases) {
    setRows(before);
    EXPECT_EQ(described(groups.duplicateSongDictsWithTopPostponed()), QString::fromUtf8(postponed));
    EXPECT_EQ(described(list()), QString::fromUtf8(after));
  }
}

TEST_F(DuplicateGroupsTest, TwoSelectedRowsNameTheirGroupsAndGrowToThem) {
  setRows("A1 B1 C2 D2 E3 F3");
  select("C");
  EXPECT_FALSE(groups.selectedDupeGroupsExpand(true));
  EXPECT_EQ(selection(), QStringLiteral("C"));
  select("BE");
  EXPECT_EQ(groups.selectedDupeGroupsExpand(false), (QSet<qint64>{1, 3}));
  EXPECT_EQ(selection(), QStringLiteral("BE"));
  EXPECT_EQ(groups.selectedDupeGroupsExpand(true), (QSet<qint64>{1, 3}));
  EXPECT_EQ(selection(), QStringLiteral("ABEF"));
}

}  // namespace
