#include <sys/stat.h>

#include <QDateTime>
#include <QFileInfo>
#include <limits>

#include "platform/qt/LibplistPropertyList.h"
#include "tests/repairs/SupervisionFixture.h"

namespace {

class SavedMerge : public Supervision {
 protected:
  Dictionary stateOnDisk() const {
    QString error;
    return services.propertyLists->parse(readFile(SavedState::statePath()), &error).toDictionary();
  }
  void putState(const Value &root, double age = 1) {
    QString error;
    putBytes(services.propertyLists->write(root, SystemPropertyList::Format::Binary, &error), age);
  }
  /// A file of the user's own that is so many seconds old.
  void putBytes(const QByteArray &bytes, double age = 1) {
    QFile file(writeFile(SavedState::statePath(), bytes));
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.open(QIODevice::ReadWrite);
    file.setFileTime(QDateTime::fromMSecsSinceEpoch(qint64((time.now().toUnix() - age) * 1000)),
                     QFileDevice::FileModificationTime);
  }
  /// What a run that got stuck saves.
  Dictionary goodState() {
    EXPECT_TRUE(saved.writeState());
    return stateOnDisk();
  }
};

}  // namespace

TEST_F(SavedMerge, ANewProcessFindsListsMarksCountersAndTab) {
  const Dictionary first = state.lists.mDuplicateSongDicts.at(0).toDictionary();
  first.set(keys::markInfo, true);
  first.set(keys::calc_rating, u"*****"_qs);
  view.tab = ProblemTab::Missing;
  state.lists.mMissingSongDicts.append(Dictionary::make());
  state.merge.mNumberCompletedBeforeRestart = 12;
  state.merge.mNumberOfNoProgressRestarts = 2;
  state.operation.mNumberOfCompletedItems = 0;
  ASSERT_TRUE(saved.writeState());
  EXPECT_TRUE(state.mIsRestarting);
  EXPECT_TRUE(first.contains(keys::calc_rating)) << "the table lost what it shows";
  struct stat facts = {};
  ASSERT_EQ(::stat(QFile::encodeName(SavedState::statePath()).constData(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777u, 0600u);

  ProblemLists before;
  std::swap(before, state.lists);
  state.merge.mNumberCompletedBeforeRestart = 0;
  state.merge.mNumberOfNoProgressRestarts = 0;
  view.tab = ProblemTab::Duplicates;
  time.run(1.5);
  ASSERT_TRUE(saved.readState());
  EXPECT_EQ(listedPIDs(), u"234501"_qs) << "the group that stuck is tried last";
  const Dictionary last = state.lists.mDuplicateSongDicts.at(4).toDictionary();
  EXPECT_EQ(last.value(keys::DupeGroup).toInteger(), 4);
  EXPECT_TRUE(last.value(keys::markInfo).toBool());
  EXPECT_FALSE(last.contains(keys::calc_rating));
  EXPECT_EQ(state.lists.mMissingSongDicts.size(), 1);
  EXPECT_EQ(state.merge.mNumberCompletedBeforeRestart, 12);
  EXPECT_EQ(state.merge.mNumberOfNoProgressRestarts, 3);
  EXPECT_FALSE(state.merge.mScriptLockedBeforeRestart);
  EXPECT_EQ(view.tab, ProblemTab::Missing);
  EXPECT_FALSE(saved.readStateExists());
  EXPECT_FALSE(saved.readState()) << "the state was taken up twice";
}

TEST_F(SavedMerge, OnlyAYoungFileIsTakenUp) {
  const Dictionary good = goodState();
  const struct {
    double age;
    bool isTaken;
  } cases[] = {{239, true}, {240, false}, {0, false}, {-5, false}, {0.5, true}};
  for (const auto &each : cases) {
    putState(good, each.age);
    EXPECT_EQ(saved.isStateUsable(), each.isTaken) << each.age;
    EXPECT_EQ(saved.readState(), each.isTaken) << each.age;
    EXPECT_FALSE(saved.readStateExists()) << each.age;
  }
}

TEST_F(SavedMerge, WhatIsNoStateOfOursChangesNothing) {
  const Dictionary good = goodState();
  const QByteArray bytes = readFile(SavedState::statePath());
  const auto refused = [this](const char *what) {
    const Array before = state.lists.mDuplicateSongDicts;
    EXPECT_FALSE(saved.isStateUsable()) << what;
    EXPECT_FALSE(saved.readState()) << what;
    EXPECT_TRUE(state.lists.mDuplicateSongDicts.isSame(before)) << what;
    EXPECT_FALSE(saved.readStateExists()) << what;
  };
  for (qsizetype length = 0; length < bytes.size(); length += 7) {
    putBytes(bytes.first(length));
    refused("torn");
  }
  putBytes("<plist><array>");
  refused("no property list");
  putState(Array::make());
  refused("no dictionary");
  for (const Key key : {keys::mDuplicateSongDicts, keys::mInconsistentNameDicts, keys::mOrphanSongDicts,
                        keys::mMissingSongDicts}) {
    for (const Value &wrong : {Value(), Value(7), Value(u"rows"_qs), Value(Dictionary::make())}) {
      const Dictionary root = good.copyMembers(true);
      root.set(key, wrong);
      putState(root);
      refused("a list that is none");
    }
    const Array rows = Array::make();
    rows.append(5);
    const Dictionary root = good.copyMembers(true);
    root.set(key, rows);
    putState(root);
    refused("a row that is none");
  }
  const std::vector<std::vector<Value>> numbers = {
      {1, 2, 1}, {0, 0}, {-1, -1}, {u"1"_qs, u"1"_qs}, {1, Value()}, {std::numeric_limits<qint64>::max()}};
  for (const std::vector<Value> &groupNumbers : numbers) {
    const Array rows = Array::make();
    for (const Value &number : groupNumbers) {
      rows.append(Dictionary::make());
      rows.at(rows.size() - 1).toDictionary().set(keys::DupeGroup, number);
    }
    const Dictionary root = good.copyMembers(true);
    root.set(keys::mDuplicateSongDicts, rows);
    putState(root);
    refused("groups that do not hold together");
  }
  const Array names = Array::make();
  names.append(Dictionary::make());
  const Dictionary root = good.copyMembers(true);
  root.set(keys::mInconsistentNameDicts, names);
  putState(root);
  refused("a name without songs");
}

TEST_F(SavedMerge, OddCountersAndForeignKeysCostNothing) {
  const Dictionary root = goodState();
  root.set(keys::problemTabIndex, 9);
  root.set(keys::mNumberCompletedBeforeRestart, -3);
  root.set(keys::mNumberOfNoProgressRestarts, u"many"_qs);
  root.set(keys::mScriptLockedBeforeRestart, Array::make());
  root.set(Key(u"of another version"), u"text"_qs);
  putState(root);
  view.tab = ProblemTab::Names;
  EXPECT_TRUE(saved.readState());
  EXPECT_EQ(view.tab, ProblemTab::Names);
  EXPECT_EQ(state.merge.mNumberCompletedBeforeRestart, 0);
  EXPECT_EQ(state.merge.mNumberOfNoProgressRestarts, 0);
  EXPECT_FALSE(state.merge.mScriptLockedBeforeRestart);
}

TEST_F(SavedMerge, OthersWhoWriteToTheFolderGainNothing) {
  const QByteArray good = [this] {
    goodState();
    return readFile(SavedState::statePath());
  }();
  const QByteArray path = QFile::encodeName(SavedState::statePath());
  const QString theirs = writeFile(u"theirs"_qs, good);
  const auto refused = [this](const char *what) {
    time.run(1);
    EXPECT_FALSE(saved.readState()) << what;
  };
  QFile::remove(SavedState::statePath());
  ASSERT_TRUE(QFile::link(theirs, SavedState::statePath()));
  refused("a link");
  EXPECT_FALSE(saved.readStateExists());
  EXPECT_EQ(readFile(theirs), good) << "the link was followed";
  ASSERT_EQ(::link(QFile::encodeName(theirs).constData(), path.constData()), 0);
  refused("a second name of a file");
  ASSERT_EQ(::mkfifo(path.constData(), 0600), 0);
  refused("a pipe");
  putBytes(good);
  ASSERT_EQ(::chmod(path.constData(), 0622), 0);
  refused("a file that others may write");

  ASSERT_TRUE(QFile::link(theirs, SavedState::statePath()));
  writeFile(theirs, "kept");
  EXPECT_TRUE(saved.writeState());
  EXPECT_EQ(readFile(theirs), "kept") << "the link was followed";
  EXPECT_FALSE(QFileInfo(SavedState::statePath()).isSymLink());
}

TEST_F(SavedMerge, TheFifthRestartWithoutARowIsRefusedAndARowBeginsAnew) {
  for (int restart = 1; restart <= 4; ++restart) EXPECT_TRUE(saved.writeState()) << restart;
  QFile::remove(SavedState::statePath());
  EXPECT_FALSE(saved.writeState());
  EXPECT_FALSE(saved.readStateExists());
  EXPECT_TRUE(logContains(u"Too many zero progress restarts (5), will not restart."_qs));
  state.operation.mNumberOfCompletedItems = 1;
  EXPECT_TRUE(saved.writeState());
  EXPECT_EQ(stateOnDisk().value(keys::mNumberOfNoProgressRestarts).toInteger(), 0);
}

TEST_F(SavedMerge, WithoutAPlaceOrAllListsNothingIsSaved) {
  state.lists.mOrphanSongDicts = Array();
  EXPECT_FALSE(saved.writeState());
  state.lists.mOrphanSongDicts = Array::make();
  ASSERT_TRUE(QDir().mkpath(SavedState::statePath() + u"/full"_qs));
  EXPECT_FALSE(saved.writeState());
  EXPECT_FALSE(state.mIsRestarting);
  EXPECT_EQ(QDir(services.folders.temporary).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
}

TEST_F(SavedMerge, AProgramThatCannotBeOpenedAgainLeavesTheStateAlone) {
  putState(goodState());
  saved.isUsed = false;
  EXPECT_FALSE(saved.readState());
  EXPECT_FALSE(saved.writeState());
  EXPECT_FALSE(saved.isStateUsable());
  EXPECT_TRUE(saved.readStateExists());
}

TEST_F(SavedMerge, TheToolIsToldTheApplicationAndTheProcess) {
  for (const bool isFolder : {false, true}) {
    if (isFolder) QDir().mkpath(saved.toolPath);
    EXPECT_FALSE(saved.prepareRelaunch());
  }
  EXPECT_EQ(terminations, 0);
  EXPECT_EQ(logText().count(u"prepareRelaunch could not find relaunch"_qs), 2);
  QDir().rmdir(saved.toolPath);
  writeFile(saved.toolPath, "no program");
  QFile::setPermissions(saved.toolPath, QFile::ReadOwner | QFile::ExeOwner);
  EXPECT_FALSE(saved.prepareRelaunch());
  EXPECT_TRUE(logContains(u" is not running"_qs));
  QFile::remove(saved.toolPath);
  putTool();
  EXPECT_TRUE(saved.prepareRelaunch());
  EXPECT_EQ(terminations, 1);
  const QByteArray expected = "/bin/true\n" + QByteArray::number(::getpid()) + '\n';
  for (int i = 0; i < 1000 && readFile(saved.toolPath + u".told"_qs) != expected; ++i) ::usleep(5000);
  EXPECT_EQ(readFile(saved.toolPath + u".told"_qs), expected);
}
