#include "platform/qt/FilePreferenceStore.h"
#include "platform/qt/LibplistPropertyList.h"
#include "tests/scanners/DuplicateGroupsFixture.h"

namespace {

class DeclaredDuplicates : public DuplicateGroupsTest {
 protected:
  void declare(const char *pids) {
    const Array rows = Array::make();
    for (const QChar pid : QString::fromUtf8(pids)) rows.append(QString(pid));
    state.ignoredDuplicates.addIgnoredDuplicatePIDs(rows);
  }
  QString declarations() {
    QStringList words;
    for (const Value &declaration : state.ignoredDuplicates.ignoredDuplicatePIDsArray()) {
      QString word;
      for (const Value &pid : declaration.toArray()) word += pid.toText();
      words.append(word);
    }
    return words.join(u' ');
  }
  DuplicateScanner::IgnoredDuplicates storeOf(AppState &owner) {
    return [&owner](const QString &pid) { return owner.ignoredDuplicates.ignoredDuplicatesForPID(pid); };
  }
};

TEST_F(DeclaredDuplicates, LeaveTheListAsFarAsTheFirstRowIsConcerned) {
  const struct {
    const char *name, *rows, *selected, *left, *stored, *stripes;
  } cases[] = {
      {"a group of two goes whole", "A1 B1 C2 D2", "AB", "C2 D2", "BA", "##"},
      {"a whole group goes with its first row", "A1 B1 C1 D2 E2", "ABC", "D2 E2", "CBA", "##"},
      {"rows behind the first stay until the next scan", "A1 B1 C1", "BC", "A1 B1 C1", "CB", "???"},
      {"a group of three loses one row", "A1 B1 C1", "AC", "A1 B1", "CA", "??"},
      {"several groups are stored from the last to the first", "A1 B1 C2 D2 E2 F3 G3", "ABCDFG", "C2 E2",
       "GF DC BA", "##"},
      {"a lone row of another group is left alone", "A1 B1 C2 D2", "ABC", "C2 D2", "BA", "##"},
      {"rows without an ID stay, what is left of the list is stored", "A1 -1 C2 D2", "A-", "A1 -1 C2 D2", "A",
       "????"},
      {"a first row without an ID has declared nothing", "-1 B1 C1", "-BC", "-1 B1 C1", "CB", "???"},
  };
  for (const auto &test : cases) {
    setRows(test.rows);
    state.ignoredDuplicates.clear();
    select(test.selected);
    numberUpdates = view.reloads[0] = 0;
    view.calls.clear();
    groups.ignoreSelectedDuplicates();
    EXPECT_EQ(described(list()), QString::fromUtf8(test.left)) << test.name;
    EXPECT_EQ(declarations(), QString::fromUtf8(test.stored)) << test.name;
    EXPECT_EQ(stripes(), QString::fromUtf8(test.stripes)) << test.name;
    EXPECT_EQ(view.calls, QStringList({QStringLiteral("rememberSelection"),
                                       QStringLiteral("sheet RememberNotDuplicatesTitle"),
                                       QStringLiteral("restoreSelection")}))
        << test.name;
    EXPECT_EQ(numberUpdates, 1);
    EXPECT_EQ(view.reloads[0], 1);
  }
}

TEST_F(DeclaredDuplicates, EarlierDeclarationsOfTheFirstRowCountToo) {
  setRows("A1 B1 C1 D2 E2");
  declare("AB");
  select("AC");
  groups.ignoreSelectedDuplicates();
  EXPECT_EQ(described(list()), QStringLiteral("D2 E2"));
}

TEST_F(DeclaredDuplicates, ADeclarationOfALaterGroupCountsInAnEarlierOne) {
  setRows("A1 B1 C1 D1 A2 D2");
  const Array rows = Array::make();
  for (const int place : {0, 1, 4, 5}) rows.append(row(place));
  groups.ignoreRows(rows);
  EXPECT_EQ(described(list()), QStringLiteral("A1 C1"));
  EXPECT_EQ(declarations(), QStringLiteral("DA BA"));
}

TEST_F(DeclaredDuplicates, NothingIsDoneWithoutTwoRowsOfOneGroupOrWithoutConsent) {
  setRows("A1 B1 C2 D2");
  for (const char *selected : {"", "A", "AC"}) {
    select(selected);
    groups.ignoreSelectedDuplicates();
    EXPECT_EQ(view.alerts.last().key, QStringLiteral("BadSelNotDuplicatesTitle")) << selected;
    EXPECT_TRUE(view.alerts.last().critical);
  }
  select("AB");
  view.answers.insert(QStringLiteral("RememberNotDuplicatesTitle"), 1);
  groups.ignoreSelectedDuplicates();
  EXPECT_EQ(view.alerts.last().key, QStringLiteral("RememberNotDuplicatesTitle"));
  EXPECT_EQ(described(list()), QStringLiteral("A1 B1 C2 D2"));
  EXPECT_EQ(declarations(), QString());
  EXPECT_EQ(numberUpdates, 0);
  const Array strangers = Array::make();
  strangers.append(row(0).copyMembers(true));
  strangers.append(row(1).copyMembers(true));
  strangers.append(7);
  EXPECT_EQ(groups.ignoreRows(strangers), 0);
  EXPECT_EQ(declarations(), QString());
}

TEST_F(DeclaredDuplicates, StayApartInTheNextScanAndInTheNextProcess) {
  FilePreferenceStore files(folder(QStringLiteral("config")), propertyLists.get());
  services.preferences = &files;
  setPlatform(services);
  prefs::set(prefs::manualMediaPath, folder(QStringLiteral("home/Music")));
  prefs::set(prefs::ignoreDurationMinimum, 30);
  for (const char16_t *pid : {u"A", u"B", u"C"}) add(pid, u"Ann", u"One", 60000);
  add(nullptr, u"Ann", u"One", 60000).remove(keys::PersistentID);
  scanner.setIgnoredDuplicates(storeOf(state));
  EXPECT_EQ(scan(), QStringLiteral("1:A,B,C,"));
  select("AC");
  groups.ignoreSelectedDuplicates();
  EXPECT_EQ(described(list()), QStringLiteral("A1 B1 -1"));
  const auto scanAgain = [&](AppState &owner) {
    state.operation.mNumberOfScannedPaths = 0;
    state.lists.mDuplicateSongDicts = Array::make();
    scanner.setIgnoredDuplicates(storeOf(owner));
    return scan();
  };
  EXPECT_EQ(scanAgain(state), QStringLiteral("1:A,B,"));
  state.ignoredDuplicates.writeIgnoredDuplicatePIDs();
  FilePreferenceStore reopened(folder(QStringLiteral("config")), propertyLists.get());
  services.preferences = &reopened;
  setPlatform(services);
  AppState nextProcess(view);
  EXPECT_EQ(scanAgain(nextProcess), QStringLiteral("1:A,B,"));
}

}  // namespace
