#include "scanners/DuplicateGroups.h"

#include "tests/scanners/ScanFixture.h"

namespace {

class DuplicateGroups : public ScanFixture {
 protected:
  void setGroups(std::initializer_list<int> groups) {
    state.lists.mDuplicateSongDicts = Array::make();
    for (const int group : groups) {
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
};

TEST_F(DuplicateGroups, StripesAlternateBetweenGroups) {
  setGroups({1, 1, 2, 2, 2, 5, 5});
  setStripesForDupesFromIndex(state, 0);
  EXPECT_EQ(stripes(), QStringLiteral("--###--"));
  setGroups({4, 4, 5});
  setStripesForDupesFromIndex(state, -1);
  EXPECT_EQ(stripes(), QStringLiteral("##-"));
}

TEST_F(DuplicateGroups, StripesGoOnFromTheRowBeforeAndNeverPastTheEnd) {
  setGroups({1, 1, 2, 3});
  setStripesForDupesFromIndex(state, 4);
  setStripesForDupesFromIndex(state, 9);
  EXPECT_EQ(stripes(), QStringLiteral("????"));
  state.lists.mDuplicateSongDicts.at(1).toDictionary().set(keys::UIStripe, true);
  setStripesForDupesFromIndex(state, 2);
  EXPECT_EQ(stripes(), QStringLiteral("?#-#"));
}

}  // namespace
