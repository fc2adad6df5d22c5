#include "scanners/DuplicateGroups.h"

#include "tests/scanners/ScanFixture.h"

namespace {

class DuplicateGroupsTest : public ScanFixture {
 protected:
  void setGroups(std::initializer_list<int> numbers) {
    state.lists.mDuplicateSongDicts = Array::make();
    for (const int group : numbers) {
      const Dictionary row = Dictionary::make();
      row.set(keys::DupeGroup, group);
      state.lists.mDuplicateSongDicts.append(row);
    }
  }
  QString stripes() const {
    QString text;
    for (const Value &row : state.lists.mDuplicateSongDicts) {
      const Value &stripe = row.toDictionary().value(keys::UIStripe);
      text += stripe.isNull() ? u'?' : (stripe.toBool() ? u'#' : u'-');
    }
    return text;
  }

  DuplicateGroups groups{state};
};

TEST_F(DuplicateGroupsTest, StripesAlternateBetweenGroups) {
  setGroups({1, 1, 2, 2, 2, 5, 5});
  groups.setStripesForDupesFromIndex(0);
  EXPECT_EQ(stripes(), QStringLiteral("--###--"));
  setGroups({4, 4, 5});
  groups.setStripesForDupesFromIndex(-1);
  EXPECT_EQ(stripes(), QStringLiteral("##-"));
}

TEST_F(DuplicateGroupsTest, StripesGoOnFromTheRowBeforeAndNeverPastTheEnd) {
  setGroups({1, 1, 2, 3});
  groups.setStripesForDupesFromIndex(4);
  groups.setStripesForDupesFromIndex(9);
  EXPECT_EQ(stripes(), QStringLiteral("????"));
  state.lists.mDuplicateSongDicts.at(1).toDictionary().set(keys::UIStripe, true);
  groups.setStripesForDupesFromIndex(2);
  EXPECT_EQ(stripes(), QStringLiteral("?#-#"));
}

}  // namespace
