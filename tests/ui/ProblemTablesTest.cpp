#include "ui/ProblemTables.h"

#include "app/state/AppState.h"
#include "scanners/DuplicateGroups.h"
#include "tests/fixtures/ScriptedView.h"
#include "tests/fixtures/TestPlatform.h"
#include "values/Keys.h"

namespace {

class ProblemTablesTest : public TestPlatform {
 protected:
  /// Rows of groups of these sizes.
  void addGroups(const std::vector<int> &sizes) {
    for (size_t group = 0; group < sizes.size(); ++group) {
      for (int i = 0; i < sizes[group]; ++i) {
        const Dictionary row = Dictionary::make();
        row.set(keys::DupeGroup, int(group) + 1);
        list().append(row);
      }
    }
  }
  const Array &list() { return state.lists.mDuplicateSongDicts; }
  void click(int row, Key mark, bool on) {
    tables.tableViewSetObjectValueForTableColumnRow(ProblemTab::Duplicates, on, mark, row);
  }
  /// For each row "i", "a", "b" for both marks, or "-".
  QString marks() {
    QString text;
    for (const Value &row : list()) {
      const bool info = row.toDictionary().value(keys::markInfo).toBool();
      const bool audio = row.toDictionary().value(keys::markAudio).toBool();
      text += info && audio ? u'b' : info ? u'i' : audio ? u'a' : u'-';
    }
    return text;
  }
  void addName(const QString &type, const QStringList &spellings, const QString &preferred) {
    const Array songs = Array::make();
    for (const QString &spelling : spellings) {
      const Dictionary song = Dictionary::make();
      song.set(keys::Artist, spelling);
      if (spelling != u"Bare") song.set(keys::Name, QStringLiteral("x"));
      songs.append(song);
    }
    const Dictionary row = Dictionary::make();
    row.set(keys::inconType, type);
    row.set(keys::inconSongs, songs);
    row.set(keys::inconPref, preferred);
    state.lists.mInconsistentNameDicts.append(row);
  }

  ScriptedView view;
  AppState state{view};
  DuplicateGroups groups{state};
  InconNameController names;
  ProblemTables tables{state, groups, names, Dictionary::make()};
};

}  // namespace

TEST_F(ProblemTablesTest, AClickKeepsTheMarksOfItsGroupConsistent) {
  addGroups({3, 2});
  const struct {
    int row;
    Key mark;
    bool on;
    const char *marks;
    bool merge;
  } clicks[] = {{1, keys::markInfo, true, "-b---", true},  {2, keys::markAudio, true, "-ia--", true},
                {0, keys::markInfo, true, "i-a--", true},  {4, keys::markAudio, true, "i-a-b", true},
                {0, keys::markInfo, false, "--a-b", true}, {4, keys::markAudio, false, "--a-i", false},
                {3, keys::markAudio, true, "--aai", true}, {3, keys::markAudio, false, "--a-i", false}};
  for (const auto &one : clicks) {
    const int before = view.validations;
    click(one.row, one.mark, one.on);
    EXPECT_EQ(marks().toStdString(), one.marks);
    EXPECT_EQ(view.validations, before + 1);
    EXPECT_EQ(tables.validateProblemUI(true).merge, one.merge) << "as counted along the way";
    EXPECT_EQ(tables.validateProblemUI().merge, one.merge) << "as counted anew";
  }
}

TEST_F(ProblemTablesTest, AClickWhileASheetIsUpOrOutsideTheMarksDoesNothing) {
  addGroups({2});
  view.otherSheet = true;
  click(0, keys::markInfo, true);
  EXPECT_EQ(marks(), u"--"_qs);
  EXPECT_TRUE(view.noted("beep"));
  EXPECT_FALSE(tables.validateProblemUI().automark);
  view.otherSheet = false;
  click(2, keys::markInfo, true);
  click(-1, keys::markAudio, true);
  click(0, keys::Name, true);
  tables.tableViewSetObjectValueForTableColumnRow(ProblemTab::Missing, true, keys::markInfo, 0);
  EXPECT_EQ(marks(), u"--"_qs);
  EXPECT_TRUE(list().at(0).toDictionary().value(keys::Name).isNull());
}

TEST_F(ProblemTablesTest, MarksOfSeveralRowsGoToTheFirstOfEachGroupAndAwayAgain) {
  addGroups({3, 2, 2});
  const std::vector<Key> both{keys::markInfo, keys::markAudio};
  tables.toggleMarks({1, 2, 4, 99}, both);
  EXPECT_EQ(marks(), u"-b--b--"_qs);
  tables.toggleMarks({1, 5}, both);
  EXPECT_EQ(marks(), u"-b--bb-"_qs) << "one was without, so both get them";
  tables.toggleMarks({1, 5}, both);
  EXPECT_EQ(marks(), u"----b--"_qs);
  EXPECT_TRUE(tables.validateProblemUI(true).merge);
}

TEST_F(ProblemTablesTest, CommandsFollowSelectionAndList) {
  EXPECT_FALSE(tables.validateProblemUI().automark);
  addGroups({2});
  EXPECT_TRUE(tables.validateProblemUI(true).unmark) << "the list has grown since";
  EXPECT_FALSE(tables.validateProblemUI().ignore);
  view.selections[int(ProblemTab::Duplicates)] = {list().at(0).toDictionary()};
  view.selections[int(ProblemTab::Names)] = view.selections[0];
  EXPECT_TRUE(tables.validateProblemUI().ignore);
  EXPECT_TRUE(tables.validateProblemUI().fixNames);
  EXPECT_FALSE(tables.validateProblemUI().missingDelete);
}

TEST_F(ProblemTablesTest, ValuesAreWorkedOutOnceAndYearsAreTexts) {
  addGroups({1});
  const Dictionary row = list().at(0).toDictionary();
  row.set(keys::Year, 1987);
  row.set(keys::TotalTime, 61000);
  const auto value = [this](Key key, int at) {
    return tables.tableViewObjectValueForTableColumnRow(ProblemTab::Duplicates, key, at);
  };
  EXPECT_EQ(value(keys::Year, 0).type(), Value::Type::Text);
  EXPECT_EQ(value(keys::calc_humanTime, 0).toText(), u"1:01"_qs);
  EXPECT_EQ(row.value(keys::calc_humanTime).toText(), u"1:01"_qs);
  EXPECT_TRUE(value(keys::Name, 0).isNull());
  EXPECT_TRUE(value(keys::Year, 1).isNull());
  EXPECT_TRUE(value(keys::Year, -1).isNull());
}

TEST_F(ProblemTablesTest, SpellingsThatLookAlikeAreToldApart) {
  const QString hidden = u"AB\u200BA"_qs, composed = u"\u00e9"_qs, accent = u"e\u0301"_qs;
  addName(keys::RKIsArtistMatched.text(),
          {u"ABA"_qs, hidden, composed, accent, u"ABA"_qs, u"Bare"_qs, u"x "_qs}, u"ABA"_qs);
  const struct {
    QString visible;
    int songs;
  } expected[] = {{u"\"x \""_qs, 1},        {u"Bare"_qs, 0}, {u"ABA"_qs, 2},
                  {u"e\u25cc\u0301"_qs, 1}, {composed, 1},   {u"AB\u2423A"_qs, 1}};
  const std::vector<SpellingChoice> choices = tables.spellingsOfRow(0);
  ASSERT_EQ(choices.size(), std::size(expected));
  for (size_t i = 0; i < choices.size(); ++i) {
    EXPECT_EQ(choices[i].visibleName, expected[i].visible);
    EXPECT_EQ(choices[i].songs, expected[i].songs) << i;
    EXPECT_EQ(choices[i].isPreferred, choices[i].name == u"ABA"_qs);
  }
  EXPECT_EQ(choiceAfterPreferred(choices)->name, accent);
  EXPECT_TRUE(tables.spellingsOfRow(1).empty());
  EXPECT_FALSE(choiceAfterPreferred({}));
}
