#include <unistd.h>

#include "bridge/iTunesInterface.h"
#include "support/Preferences.h"
#include "tests/fixtures/MergeWorld.h"
#include "tools/demo/Picture.h"
#include "values/Keys.h"

namespace {

class Merge : public MergeWorld {
 protected:
  void setPolicy(UnkeptPolicy policy) { setPreference(prefs::unkeptActionPolicy, int(policy)); }
  QStringList fates() {
    static const char *const names[] = {"trashed",   "moved",  "already", "deleted",
                                        "collected", "shared", "gone",    "no path"};
    QStringList told;
    const MergeReport::Contents contents = report();
    for (const MergedGroup &group : contents.groups) {
      for (const MergedGroup::Unkept &unkept : group.unkept)
        told += QString::fromLatin1(names[int(unkept.fate)]);
    }
    return told;
  }
  /// What earlier cases left in the library is not listed.
  void keepOnly(qint64 group) {
    const Array rows = Array::make();
    for (const Dictionary &row : rowsOfGroup(group)) rows.append(row);
    state.lists.mDuplicateSongDicts = rows;
  }
  int scriptsWith(const QString &text) const { return int(scripts.filter(text).size()); }
  void recordScripts() {
    keeper.intercept = [this](const QString &source) {
      scripts += source;
      return std::nullopt;
    };
  }
  QStringList scripts;
};

}  // namespace

TEST_F(Merge, OneTrackStaysOfAGroupWithThePlaysAndPlacesOfAll) {
  const QString kept = addSong(1, {u"A"_qs, 3, 1});
  const QString other = addSong(1, {u"B"_qs, 4, 2});
  const QString list = keeper.addPlaylist(u"L"_qs, {other, kept, other});
  const QString path = pathOf(other);
  const Holdings before = holdings();
  scan();
  recordScripts();
  merge();
  expectNothingLost(before);
  EXPECT_EQ(tracksOfGroup(1), QStringList{kept});
  EXPECT_EQ(plays(kept), 7);
  EXPECT_EQ(session.recycled(), QStringList{path});
  EXPECT_TRUE(state.lists.mDuplicateSongDicts.isEmpty());
  EXPECT_TRUE(state.operation.mCompletedOperation);
  EXPECT_EQ(state.operation.mNumberOfCompletedItems, 1);
  EXPECT_EQ(scriptsWith(u"copyInfo"_qs), 0);
  const MergeReport::Contents told = report();
  ASSERT_EQ(told.groups.size(), 1u);
  EXPECT_EQ(told.groups[0].playlists, QStringList{u"L"_qs});
  EXPECT_TRUE(told.groups[0].complete && told.failures.empty());
  EXPECT_EQ(told.after->tracks, 1);
  EXPECT_EQ(told.after->playlistEntries, 3);
}

TEST_F(Merge, TheKeptTrackGetsTheInformationAndThePicturesOfTheMarkedRow) {
  for (const bool hasPicture : {true, false}) {
    const qint64 group = hasPicture ? 1 : 2;
    const QByteArray cover = makeCover(16, 0x112233, 0x445566);
    const QString kept = addSong(group, {.name = u"Old"_qs, .artwork = hasPicture ? QByteArray() : cover});
    const QString info = addSong(group, {.name = u"New"_qs, .artwork = hasPicture ? cover : QByteArray()});
    const Holdings before = holdings();
    scan();
    mark(kept, info);
    state.merge.report.clear();
    merge();
    expectNothingLost(before);
    EXPECT_EQ(tracksOfGroup(group), QStringList{kept});
    EXPECT_EQ(keeper.trackValue(kept, keys::Name).toText(), u"New"_qs);
    EXPECT_EQ(readFile(pathOf(kept)).contains(cover), hasPicture);
  }
  EXPECT_TRUE(report().failures.empty());
}

TEST_F(Merge, EachPolicyDisposesOfTheFilesAsTold) {
  struct {
    UnkeptPolicy policy;
    const char *fate;
    qsizetype tracks, inTrash, inFolder;
  } const cases[] = {{UnkeptPolicy::Trash, "trashed", 1, 1, 0},
                     {UnkeptPolicy::Folder, "moved", 1, 1, 1},
                     {UnkeptPolicy::Playlist, "collected", 2, 1, 1},
                     {UnkeptPolicy(3), "collected", 2, 1, 1}};
  qint64 group = 0;
  for (const auto &expected : cases) {
    ++group;
    setPolicy(expected.policy);
    state.merge.report.clear();
    addSong(group, {.plays = 2});
    const QString unkept = addSong(group, {.plays = 1});
    const Holdings before = holdings();
    scan();
    keepOnly(group);
    merge();
    expectNothingLost(before);
    EXPECT_EQ(fates().value(fates().size() - 1), QString::fromLatin1(expected.fate));
    EXPECT_EQ(tracksOfGroup(group).size(), expected.tracks);
    EXPECT_EQ(session.namesInTrash().size(), expected.inTrash);
    EXPECT_EQ(QDir(unkeptFolder()).entryList(QDir::Files).size(), expected.inFolder);
    EXPECT_TRUE(report().failures.empty());
    EXPECT_TRUE(rowsOfGroup(group).empty());
  }
  EXPECT_EQ(keeper.playlistNames(), QStringList{u"Duplicates Not Kept"_qs});
}

TEST_F(Merge, AFileIsNeverTakenFromATrackThatStays) {
  const QString hard = folder(u"music/hard.mp3"_qs), soft = folder(u"music/soft.mp3"_qs);
  for (const UnkeptPolicy policy : {UnkeptPolicy::Trash, UnkeptPolicy::Folder}) {
    setPolicy(policy);
    const qint64 group = policy == UnkeptPolicy::Trash ? 1 : 2;
    const QString kept = addSong(group);
    const QString path = pathOf(kept);
    QFile::remove(hard);
    QFile::remove(soft);
    ASSERT_EQ(::link(QFile::encodeName(path).constData(), QFile::encodeName(hard).constData()), 0);
    ASSERT_TRUE(QFile::link(path, soft));
    addSong(group, {.path = path, .makesFile = false});
    addSong(group, {.path = hard, .makesFile = false});
    addSong(group, {.path = soft, .makesFile = false});
    // A song of another group has the file of one that is not kept.
    const QString elsewhere = pathOf(addSong(group + 10));
    addSong(group, {.path = elsewhere, .makesFile = false});
    const Holdings before = holdings();
    scan();
    keepOnly(group);
    state.merge.report.clear();
    merge();
    expectNothingLost(before);
    EXPECT_EQ(fates().count(u"shared"_qs), 4);
    EXPECT_EQ(tracksOfGroup(group), QStringList{kept});
    EXPECT_TRUE(QFile::exists(path) && QFile::exists(elsewhere));
    EXPECT_TRUE(report().failures.empty());
  }
  EXPECT_TRUE(session.recycled().isEmpty());
  EXPECT_TRUE(logContains(u"Not trashing unkept song because location is the same as the kept song"_qs));
}

TEST_F(Merge, AMarkedFileThatIsGoneStopsTheRunBeforeItsGroup) {
  for (const bool isInfo : {false, true}) {
    const qint64 group = isInfo ? 2 : 1;
    const QString kept = addSong(group, {.plays = 1}), info = addSong(group, {.plays = 2});
    addSong(group);
    scan();
    keepOnly(group);
    mark(kept, info);
    const QString gone = pathOf(isInfo ? info : kept);
    ASSERT_TRUE(QFile::remove(gone));
    if (isInfo) QDir().mkpath(gone);
    merge();
    EXPECT_EQ(state.operation.cancelOperationReason(), u"missingError:"_qs + gone);
    EXPECT_EQ(plays(kept), 1);
    EXPECT_EQ(tracksOfGroup(group).size(), 3);
    EXPECT_EQ(rowsOfGroup(group).size(), 3u);
    EXPECT_TRUE(session.recycled().isEmpty());
  }
}

TEST_F(Merge, AGroupWithoutBothMarksIsPassedOverAndOneOfTwoMarksTakesTheTopmost) {
  const QString first = addSong(1), second = addSong(1);
  const QString third = addSong(2), fourth = addSong(2), fifth = addSong(2);
  scan();
  for (const Dictionary &row : rowsOfGroup(1)) row.remove(keys::markInfo);
  for (const Dictionary &row : rowsOfGroup(2)) {
    const bool isTop = row.value(keys::PersistentID).toText() == third;
    row.set(keys::markAudio, isTop ? Value() : Value(true));
    row.set(keys::markInfo, isTop ? Value() : Value(true));
  }
  merge();
  EXPECT_EQ(tracksOfGroup(1).size(), 2);
  EXPECT_EQ(rowsOfGroup(1).size(), 2u);
  EXPECT_EQ(tracksOfGroup(2), QStringList{fourth});
  EXPECT_TRUE(state.operation.mCompletedOperation);
}

TEST_F(Merge, AnUnkeptFileThatIsGoneOrNeverWasCostsItsTrackOnly) {
  addSong(1);
  const QString gone = addSong(1), empty = addSong(1), isFolder = addSong(1);
  scan();
  for (const Dictionary &row : rowsOfGroup(1)) {
    if (row.value(keys::PersistentID).toText() == empty) row.remove(keys::Path);
  }
  QFile::remove(pathOf(gone));
  QFile::remove(pathOf(isFolder));
  QDir().mkpath(pathOf(isFolder) + u"/inner"_qs);
  merge();
  EXPECT_EQ(tracksOfGroup(1).size(), 1);
  EXPECT_EQ(fates(), (QStringList{u"gone"_qs, u"no path"_qs, u"gone"_qs}));
  EXPECT_TRUE(QFile::exists(pathOf(empty)) || session.recycled().isEmpty());
}

TEST_F(Merge, AFolderThatTakesNoCopyCostsNeitherFileNorTrack) {
  setPolicy(UnkeptPolicy::Folder);
  // A file stands where the folder should be.
  setPreference(prefs::unkeptPath, writeFile(u"full"_qs, "x") + u"/in"_qs);
  addSong(1);
  addSong(1);
  const Holdings before = holdings();
  scan();
  merge();
  expectNothingLost(before);
  EXPECT_EQ(tracksOfGroup(1).size(), 2);
  EXPECT_EQ(rowsOfGroup(1).size(), 2u);
  // The next file would fare no better.
  EXPECT_TRUE(state.operation.cancelOperationReason().startsWith(u"error: folder: cannot write to"_qs));
  EXPECT_FALSE(report().groups[0].complete);
}

TEST_F(Merge, FailuresOfScriptsAreLoggedAndTheMergeGoesOn) {
  addSong(1, {.plays = 1});
  addSong(1, {.plays = 2});
  const Holdings before = holdings();
  scan();
  mark(tracksOfGroup(1)[0], tracksOfGroup(1)[1]);
  int failed = 0;
  keeper.intercept = [&](const QString &source) -> std::optional<ScriptOutcome> {
    const bool isFirstMerge = source.contains(u"mergePlayed(\""_qs) && failed == 0;
    if (!isFirstMerge && !source.contains(u"copyInfo(\""_qs)) return std::nullopt;
    ++failed;
    return ScriptOutcome{ScriptDescriptor::ofText(u"error: no"_qs), {}};
  };
  merge();
  EXPECT_EQ(failed, 2);
  expectNothingLost(before);
  EXPECT_TRUE(logContains(u"playmerge error: no for "_qs) && logContains(u"info copy error: no for "_qs));
  EXPECT_EQ(tracksOfGroup(1).size(), 1);
}
