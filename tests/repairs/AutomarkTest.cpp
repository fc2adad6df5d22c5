#include "repairs/Automark.h"

#include <QDir>
#include <QFile>

#include "app/state/AppState.h"
#include "scanners/DuplicateGroups.h"
#include "support/BMLog.h"
#include "support/Preferences.h"
#include "tests/fixtures/IdleCommands.h"
#include "tests/fixtures/ScriptedView.h"
#include "tests/fixtures/TestPlatform.h"
#include "values/Keys.h"

namespace {

/// A list of duplicates whose rows are told apart by their bit rates.
class AutomarkTest : public TestPlatform, public IdleCommands {
 protected:
  AutomarkTest() { state.commands = this; }

  Dictionary add(int group, int bitRate, const QString &path = {}) {
    const Dictionary row = Dictionary::make();
    row.set(keys::DupeGroup, group);
    row.set(keys::BitRate, bitRate);
    if (!path.isEmpty()) row.set(keys::Path, path);
    state.lists.mDuplicateSongDicts.append(row);
    return row;
  }

  /// A file of a size, without its bytes.
  QString sparseFile(const QString &name, qint64 size) const {
    QFile file(folder(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(size));
    return file.fileName();
  }

  Array rows() const { return state.lists.mDuplicateSongDicts; }

  /// Of each row "i" with the mark of the information, "a" with that of the audio, "-" without.
  QString marks() const {
    QStringList text;
    for (const Value &value : rows()) {
      const Dictionary &row = value.toDictionary();
      const QString marked = QString(row.value(keys::markInfo).toBool() ? u"i"_qs : QString()) +
                             (row.value(keys::markAudio).toBool() ? u"a"_qs : QString());
      text.append(marked.isEmpty() ? u"-"_qs : marked);
    }
    return text.join(u' ');
  }

  void noteAppliedAutomarkValues() override {
    ++notedValues;
    time.setNow(Date{time.now().seconds + secondsTaken});
  }

  double secondsTaken = 0;
  int notedValues = 0;
  ScriptedView view;
  AppState state{view};
  DuplicateGroups groups{state};
  Automark automark{state, groups};
};

TEST_F(AutomarkTest, EveryGroupLosesItsOldMarksAndGetsTwo) {
  add(1, 128);
  add(1, 256).set(keys::markInfo, true);
  add(1, 192);
  add(2, 96).set(keys::markAudio, true);
  add(2, 96);
  automark.doAutomark();
  EXPECT_EQ(marks(), QStringLiteral("- a i - ia"));
  EXPECT_EQ(notedValues, 1);
  EXPECT_EQ(view.reloads[int(ProblemTab::Duplicates)], 1);
  EXPECT_EQ(view.validations, 1);
  ASSERT_EQ(automark.lastChoices().size(), 2U);
  const Automark::Choice &second = automark.lastChoices()[1];
  EXPECT_EQ(second.firstRow, 3);
  EXPECT_EQ(second.rowCount, 2);
  EXPECT_EQ(second.marks.audioScore, 96);
  EXPECT_FALSE(logContains(QStringLiteral("automark took")));
}

TEST_F(AutomarkTest, ASelectionKeepsTheMarksOfOtherRowsAndGroups) {
  add(1, 128).set(keys::markInfo, true);
  add(1, 256);
  add(1, 192);
  add(2, 64).set(keys::markAudio, true);
  add(2, 96);
  view.selections[0] = {rows().at(1).toDictionary(), rows().at(2).toDictionary()};
  automark.doAutomarkFromPreferences();
  EXPECT_EQ(marks(), QStringLiteral("i a i a -"));
  EXPECT_EQ(automark.lastChoices().size(), 1U);
  view.selections[0] = {rows().at(0).toDictionary(), rows().at(3).toDictionary()};
  automark.doUnmark();
  EXPECT_EQ(marks(), QStringLiteral("- a i - -"));
  view.selections[0].pop_back();
  automark.doUnmark();
  EXPECT_EQ(marks(), QStringLiteral("- - - - -"));
}

TEST_F(AutomarkTest, FragmentsAndLostFilesLoseAgainstSongsOnDisk) {
  add(1, 320, sparseFile(QStringLiteral("fragment"), 99999));
  add(1, 128, sparseFile(QStringLiteral("song"), 100000));
  add(1, 320, folder(QStringLiteral("gone")));
  add(2, 320, folder());
  add(2, 128, folder(QStringLiteral("song")));
  automark.doAutomark();
  EXPECT_EQ(marks(), QStringLiteral("- a i a i"));
}

TEST_F(AutomarkTest, KindsComeFromTheResources) {
  setPreference(prefs::preferAudioFileType, true);
  setPreference(prefs::preferAudioFileTypeNumber, 6);
  add(1, 64).set(keys::Kind, QStringLiteral("MPEG audio file"));
  add(1, 320).set(keys::Kind, QStringLiteral("Protected AAC audio file"));
  automark.doAutomark();
  EXPECT_EQ(marks(), QStringLiteral("a i"));
}

TEST_F(AutomarkTest, ASlowRunIsLogged) {
  secondsTaken = 1.5;
  add(1, 1);
  add(1, 1);
  automark.doAutomark();
  EXPECT_TRUE(logContains(QStringLiteral("[!] automark took 1.50 secs for 2 items")));
}

TEST_F(AutomarkTest, UnmarkingLeavesUnmarkedRowsInTheMemoryTheyShare) {
  const Dictionary track = add(1, 1);
  const Dictionary row = track.copyMembers(true);
  state.lists.mDuplicateSongDicts.append(row);
  automark.doUnmark();
  EXPECT_EQ(row.begin(), track.begin());
  automark.doAutomark();
  EXPECT_EQ(marks(), QStringLiteral("- ia"));
}

}  // namespace
