#include "scanners/DuplicateGroups.h"

#include <random>

#include "tests/scanners/DuplicateGroupsFixture.h"

namespace {

/// Marks as they should be by a walk over the whole list.
bool plainValidate(const Array &list, Key mark, qsizetype place, const Value &newValue) {
  if (!newValue.toBool()) return false;
  const Dictionary preferred = list.at(place).toDictionary();
  bool changed = false;
  int information = 0, audio = 0;
  for (const Value &value : list) {
    const Dictionary &row = value.toDictionary();
    if (!isEqual(row.value(keys::DupeGroup), preferred.value(keys::DupeGroup))) continue;
    if (!row.isSame(preferred) && row.value(mark).toBool()) {
      row.remove(mark);
      changed = true;
    }
    information += row.value(keys::markInfo).toBool() ? 1 : 0;
    audio += row.value(keys::markAudio).toBool() ? 1 : 0;
  }
  if (information && audio) return changed;
  preferred.set(audio ? keys::markInfo : keys::markAudio, true);
  return true;
}

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
      {"the first click gives both marks", "-- -- --", keys::markInfo, 1, true, true, "-- ia --"},
      {"the first click on audio too", "-- -- --", keys::markAudio, 0, true, true, "ia -- --"},
      {"a mark moves", "ia i- --", keys::markInfo, 1, true, true, "-a i- --"},
      {"a mark that was there changes nothing else", "-a i- --", keys::markInfo, 1, true, false, "-a i- --"},
      {"clearing the only mark repairs nothing", "-a -- --", keys::markInfo, 0, false, false, "-a -- --"},
      {"another key completes audio alone", "-- -- --", keys::Compilation, 2, true, true, "-- -- -a"},
      {"no such row", "-- -- --", keys::markInfo, 5, true, false, "-- -- --"},
      {"no such row before the first", "-- -- --", keys::markInfo, -1, true, false, "-- -- --"},
  };
  for (const auto &test : cases) {
    setRows("A1 B1 C1 X2");
    row(3).set(keys::markInfo, true);
    setMarks(test.before);
    if (test.value && test.place >= 0 && test.place < 4) row(test.place).set(test.mark, true);
    EXPECT_EQ(groups.validateDuplicatesForIdentifierPreferringRowNewValue(test.mark, test.place, test.value),
              test.answer)
        << test.name;
    EXPECT_EQ(marks(), QString::fromUtf8(test.after) + QStringLiteral(" i-")) << test.name;
  }
}

TEST_F(DuplicateGroupsTest, MarksAreThoseOfAWalkOverTheWholeList) {
  std::mt19937 random{7};
  const Key columns[] = {keys::markInfo, keys::markAudio, keys::Compilation};
  for (int round = 0; round < 2000; ++round) {
    state.lists.mDuplicateSongDicts = Array::make();
    Array expected = Array::make();
    for (int group = 1; group < 5; ++group) {
      for (quint32 member = 0; member <= random() % 4; ++member) {
        const Dictionary made = addRow(QString(), group);
        for (const Key column : columns) {
          if (random() % 3 == 0) made.set(column, random() % 3 != 0);
        }
      }
    }
    for (const Value &value : list()) expected.append(value.toDictionary().copyMembers(true));
    const auto place = qint32(random() % quint32(list().size()));
    const Key column = columns[random() % 3];
    const Value value = random() % 4 ? Value(1) : Value(false);
    EXPECT_EQ(groups.validateDuplicatesForIdentifierPreferringRowNewValue(column, place, value),
              plainValidate(expected, column, place, value));
    ASSERT_TRUE(isEqual(list(), expected)) << round;
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
