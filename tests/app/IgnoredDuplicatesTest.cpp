#include "app/state/IgnoredDuplicates.h"

#include <random>

#include "app/state/AppState.h"
#include "platform/qt/LibplistPropertyList.h"
#include "support/Preferences.h"
#include "tests/fixtures/ScriptedView.h"
#include "tests/fixtures/TestPlatform.h"
#include "values/Keys.h"

namespace {

class IgnoredDuplicatesTest : public TestPlatform {
 protected:
  IgnoredDuplicatesTest() {
    state.library.mMusicLibrary = Dictionary::make();
    state.library.mMusicLibrary.set(keys::LibraryPersistentID, QStringLiteral("LIB"));
  }

  /// "AB CD" as two lists of persistent IDs.
  static Array lists(const char *text) {
    const Array result = Array::make();
    for (const QString &word : QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts)) {
      const Array pids = Array::make();
      for (const QChar pid : word) pids.append(QString(pid));
      result.append(pids);
    }
    return result;
  }
  static QString ignored(IgnoredDuplicates &store, const QString &pid) {
    QStringList pids = store.ignoredDuplicatesForPID(pid).values();
    pids.sort();
    return pids.join(QString());
  }
  QByteArray plist(const Value &root, SystemPropertyList::Format format) const {
    return propertyLists->write(root, format, nullptr);
  }
  static qsizetype warnings() { return logText().count(QStringLiteral("!!")); }

  ScriptedView view;
  AppState state{view};
  IgnoredDuplicates &store = state.ignoredDuplicates;
  const QString key = QStringLiteral("NotDup-LIB");
  const QString formerFile = QStringLiteral("home/Library/Preferences/org.tallyfen.Test.LIB.plist");
};

}  // namespace

TEST_F(IgnoredDuplicatesTest, EachLibraryHasItsOwnKeyFixedAtFirstUse) {
  const QString home = folder(QStringLiteral("home"));
  const struct {
    QString media, expected;
  } cases[] = {{QString(), key},
               {home + QStringLiteral("/Music"), QStringLiteral("NotDup-~/Music")},
               {home, QStringLiteral("NotDup-~")},
               {home + QStringLiteral("less/Music"), u"NotDup-%1less/Music"_qs.arg(home)},
               {QStringLiteral("/Volumes/M"), QStringLiteral("NotDup-/Volumes/M")}};
  for (const auto &[media, expected] : cases) {
    setPreference(prefs::manualMediaPath, media.isEmpty() ? Value() : Value(media));
    IgnoredDuplicates other(state);
    EXPECT_EQ(other.ignoredDuplicatePIDsPrefsKey(), expected);
    setPreference(prefs::manualMediaPath, QStringLiteral("/other"));
    EXPECT_EQ(other.ignoredDuplicatePIDsPrefsKey(), expected);
  }
}

TEST_F(IgnoredDuplicatesTest, ATrackIsIgnoredWithAllThatWasDeclaredWithIt) {
  store.writeIgnoredDuplicatePIDs();
  EXPECT_TRUE(preference(key).isNull()) << "written without having been loaded";
  store.addIgnoredDuplicatePIDs(lists("AB").at(0).toArray());
  EXPECT_EQ(ignored(store, QStringLiteral("A")), QStringLiteral("AB"));
  for (const Value &more : lists("CAD EF")) store.addIgnoredDuplicatePIDs(more.toArray());
  EXPECT_EQ(ignored(store, QStringLiteral("A")), QStringLiteral("ABCD"));
  EXPECT_EQ(ignored(store, QStringLiteral("B")), QStringLiteral("AB"));
  EXPECT_EQ(ignored(store, QStringLiteral("X")), QString());
  EXPECT_EQ(ignored(store, QString()), QString());
  EXPECT_EQ(preference(key).toArray().size(), 0) << "nothing is written before the end";
  store.writeIgnoredDuplicatePIDs();
  EXPECT_TRUE(isEqual(preference(key), lists("AB CAD EF")));
  setPreference(key, lists("EFG"));
  EXPECT_EQ(ignored(store, QStringLiteral("F")), QStringLiteral("EFG")) << "loaded again";
  store.clear();
  EXPECT_EQ(ignored(store, QStringLiteral("F")), QString());
}

TEST_F(IgnoredDuplicatesTest, WhatAnotherProcessStoredIsNotLost) {
  const struct {
    const char *meanwhile, *expected;
    bool cleared;
  } cases[] = {
      {"AB", "AB XY", false},
      {"AB CD", "AB CD XY", false},
      {"", "XY", false},
      {"AB CD", "XY", true},
  };
  for (const auto &[meanwhile, expected, cleared] : cases) {
    setPreference(key, lists("AB"));
    IgnoredDuplicates other(state);
    other.ignoredDuplicatePIDsArray();
    setPreference(key, lists(meanwhile));
    if (cleared) other.clear();
    other.addIgnoredDuplicatePIDs(lists("XY").at(0).toArray());
    other.writeIgnoredDuplicatePIDs();
    EXPECT_TRUE(isEqual(preference(key), lists(expected))) << expected;
  }
}

TEST_F(IgnoredDuplicatesTest, TheIndexAnswersLikeAWalkOverAllDeclarations) {
  std::mt19937 random{3};
  const auto pid = [&] { return QString::number(random() % 40); };
  for (int round = 0; round < 60; ++round) {
    const Array pids = Array::make();
    for (quint32 member = 0; member < random() % 5; ++member) pids.append(pid());
    store.addIgnoredDuplicatePIDs(pids);
    const QString asked = pid();
    QSet<QString> expected;
    for (const Value &declaration : store.ignoredDuplicatePIDsArray()) {
      QSet<QString> members;
      for (const Value &member : declaration.toArray()) members.insert(member.toText());
      if (members.contains(asked)) expected += members;
    }
    EXPECT_EQ(store.ignoredDuplicatesForPID(asked), expected);
  }
}

TEST_F(IgnoredDuplicatesTest, AFormerFileIsTakenOverOnceAndABadOneIsNone) {
  using Format = SystemPropertyList::Format;
  const Dictionary foreign = Dictionary::make();
  foreign.set(keys::Name, QStringLiteral("A"));
  const struct {
    const char *name;
    QByteArray bytes;
    const char *taken;
    int logged;
  } cases[] = {
      {"none", {}, "", 0},
      {"empty", "", "", 0},
      {"XML", plist(lists("AB CD"), Format::Xml), "AB CD", 0},
      {"binary", plist(lists("AB CD"), Format::Binary), "AB CD", 0},
      {"a dictionary", plist(foreign, Format::Xml), "", 1},
      {"no property list", QByteArray("\x89PNG\r\n\0\0", 8), "", 1},
      {"cut", plist(lists("AB CD"), Format::Binary).left(30), "", 1},
  };
  for (const auto &test : cases) {
    setPreference(key, Value());
    QFile::remove(folder(formerFile));
    if (!test.bytes.isNull()) writeFile(formerFile, test.bytes);
    const qsizetype before = warnings();
    IgnoredDuplicates other(state);
    EXPECT_TRUE(isEqual(other.ignoredDuplicatePIDsArray(), lists(test.taken))) << test.name;
    EXPECT_TRUE(isEqual(preference(key), lists(test.taken))) << test.name << ": saved at once";
    EXPECT_EQ(warnings() - before, test.logged) << test.name << qPrintable(logText());
    EXPECT_EQ(readFile(folder(formerFile)), test.bytes) << test.name;
  }
}

TEST_F(IgnoredDuplicatesTest, OlderFilesAreSearchedFromTheLastName) {
  const auto write = [&](const char16_t *name, const Value &root) {
    writeFile(QStringLiteral("older/com.brinmoor.tallyfen") + QString::fromUtf16(name),
              plist(root, SystemPropertyList::Format::Xml));
  };
  EXPECT_TRUE(IgnoredDuplicates::arrayFromOlderFiles(folder(QStringLiteral("none"))).isNull());
  write(u".plist", lists("XX"));
  write(u"x.1.plist", lists("XX"));
  EXPECT_TRUE(IgnoredDuplicates::arrayFromOlderFiles(folder(QStringLiteral("older"))).isNull());
  write(u".1.plist", lists("AB"));
  write(u".2.plist", lists("CD"));
  write(u".3.plist", Dictionary::make());
  EXPECT_TRUE(isEqual(IgnoredDuplicates::arrayFromOlderFiles(folder(QStringLiteral("older"))), lists("CD")));
}

TEST_F(IgnoredDuplicatesTest, AForeignValueInThePreferencesIsKeptAside) {
  setPreference(key + QStringLiteral("-foreign"), 1);
  setPreference(key, QStringLiteral("no list"));
  EXPECT_EQ(ignored(store, QStringLiteral("A")), QString());
  EXPECT_EQ(preference(key).toText(), QStringLiteral("no list")) << "changed by reading";
  store.addIgnoredDuplicatePIDs(lists("AB").at(0).toArray());
  store.writeIgnoredDuplicatePIDs();
  EXPECT_TRUE(isEqual(preference(key), lists("AB")));
  EXPECT_EQ(preference(key + QStringLiteral("-foreign2")).toText(), QStringLiteral("no list"));
  EXPECT_EQ(preference(key + QStringLiteral("-foreign")).toInteger(), 1);
  EXPECT_EQ(warnings(), 1);
}

TEST_F(IgnoredDuplicatesTest, ForeignMembersAreLeftAloneAndKept) {
  const Array stored = lists("AB");
  stored.append(7);
  stored.append(Dictionary::make());
  stored.at(0).toArray().append(3);
  stored.at(0).toArray().append(QString());
  setPreference(key, stored);
  EXPECT_EQ(store.ignoredDuplicatesForPID(QStringLiteral("A")),
            (QSet<QString>{QStringLiteral("A"), QStringLiteral("B")}));
  store.writeIgnoredDuplicatePIDs();
  EXPECT_TRUE(isEqual(preference(key), stored));
  EXPECT_EQ(warnings(), 1);
}

TEST_F(IgnoredDuplicatesTest, TheUntrustedListIsStoredAndLeavesNoTraceWhenEmpty) {
  UntrustedLocations &untrusted = state.untrustedLocations;
  setPreference(prefs::untrustedPIDs_3, lists("AB").at(0));
  untrusted.writeUntrustedLocationPIDsArray();
  EXPECT_EQ(preference(prefs::untrustedPIDs_3).toArray().size(), 2) << "written without having been loaded";
  const Array list = untrusted.untrustedLocationPIDsArray();
  EXPECT_TRUE(list.isSame(untrusted.untrustedLocationPIDsArray()));
  list.append(QStringLiteral("C"));
  EXPECT_EQ(preference(prefs::untrustedPIDs_3).toArray().size(), 2);
  untrusted.writeUntrustedLocationPIDsArray();
  EXPECT_EQ(preference(prefs::untrustedPIDs_3).toArray().size(), 3);
  while (!list.isEmpty()) list.removeAt(0);
  untrusted.writeUntrustedLocationPIDsArray();
  EXPECT_TRUE(preference(prefs::untrustedPIDs_3).isNull());
  setPreference(prefs::untrustedPIDs_3, 5);
  const Array fresh = AppState(view).untrustedLocations.untrustedLocationPIDsArray();
  EXPECT_TRUE(fresh.isMutable() && fresh.isEmpty());
  EXPECT_EQ(warnings(), 1);
}
