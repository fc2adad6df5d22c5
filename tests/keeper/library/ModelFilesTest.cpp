#include <sys/stat.h>

#include <QFile>
#include <QFileInfo>

#include "audio/AudioInfoTag.h"
#include "keeper/library/MediaFolder.h"
#include "tests/keeper/library/ModelFixture.h"
#include "tools/demo/Picture.h"
#include "values/Keys.h"

namespace {

class ModelFiles : public ModelFixture {
 protected:
  /// Adds a file by a script; its persistent ID.
  QString add(const QString &path) {
    return keeper.tell(u"return persistent ID of (add "_qs + file(path) + u')');
  }
  QString pathOf(int track) {
    return keeper.tell(u"return POSIX path of (get location of track %1)"_qs.arg(track));
  }
  const QString media = u"music/iTunes/iTunes Media/Music"_qs;
};

}  // namespace

TEST_F(ModelFiles, AnAddedFileTellsItsTagAndItsAudio) {
  SongTags tags = tagsOf(u"Näme"_qs, u"Artist"_qs, u"Album"_qs, 3);
  tags.albumArtist = u"Album Artist"_qs;
  tags.composer = u"Composer"_qs;
  tags.comments = u"Comments"_qs;
  tags.genre = u"Genre"_qs;
  tags.year = 1987;
  tags.trackCount = 9;
  tags.disc = 1;
  tags.discCount = 2;
  tags.compilation = true;
  tags.artwork = makeCover(16, 0x102030, 0xffffff);
  for (const QString &name : {u"in/a.mp3"_qs, u"in/b.m4a"_qs}) {
    const QString path = makeSong(name, tags);
    const QString id = add(path);
    ASSERT_EQ(id.size(), 16) << id.toStdString();
    for (const Key text :
         {keys::Artist, keys::Album, keys::AlbumArtist, keys::Composer, keys::Comments, keys::Genre})
      EXPECT_EQ(keeper.trackValue(id, text).toText(), text.text()) << name.toStdString();
    const std::pair<Key, qint64> numbers[] = {
        {keys::Year, 1987},        {keys::TrackNumber, 3}, {keys::TrackCount, 9},
        {keys::DiscNumber, 1},     {keys::DiscCount, 2},   {keys::ArtworkCount, 1},
        {keys::SampleRate, 44100}, {keys::BitRate, 128},   {keys::Size, QFileInfo(path).size()}};
    for (const auto &[key, number] : numbers)
      EXPECT_EQ(keeper.trackValue(id, key).toInteger(), number)
          << name.toStdString() << key.text().toStdString();
    EXPECT_EQ(keeper.trackValue(id, keys::Name).toText(), u"Näme"_qs);
    EXPECT_TRUE(keeper.trackValue(id, keys::Compilation).toBool());
    EXPECT_EQ(keeper.trackValue(id, keys::Kind).toText(),
              name.endsWith(u"3") ? u"MPEG audio file"_qs : u"AAC audio file"_qs);
    EXPECT_NEAR(double(keeper.trackValue(id, keys::TotalTime).toInteger()), 2000, 200);
    EXPECT_EQ(keeper.trackValue(id, keys::DateAdded).toDate()->seconds, time.now().seconds);
    EXPECT_EQ(pathOf(name.endsWith(u"3") ? 1 : 2), path);
  }
}

TEST_F(ModelFiles, AVaryingBitRateIsTimedByItsCountOfFrames) {
  const QString path = makeSong(u"in/a.mp3"_qs, tagsOf(u"A"_qs, u"X"_qs, u"Y"_qs, 1), 4);
  QByteArray bytes = readFile(path);
  constexpr qsizetype kBehindSideInformation = 21;
  const qsizetype frame = bytes.indexOf("\xff\xfb") + kBehindSideInformation;
  bytes.replace(frame, 12, QByteArray("Xing\0\0\0\1\0\0\1\x7f", 12));
  const QString id = add(writeFile(u"in/a.mp3"_qs, bytes));
  EXPECT_NEAR(double(keeper.trackValue(id, keys::TotalTime).toInteger()), 383 * 1152 / 44.1, 1);
}

TEST_F(ModelFiles, KnownFilesAreNotAddedTwiceAndOtherKindsNotAtAll) {
  const QString path = makeSong(u"in/a.mp3"_qs, tagsOf(u"A"_qs, u"X"_qs, u"Y"_qs, 1));
  const QString text = writeFile(u"in/notes.flac"_qs, QByteArray(5000, 'x'));
  const QString list = keeper.addPlaylist(u"New"_qs);
  EXPECT_EQ(add(path), add(path));
  EXPECT_EQ(keeper.tell(u"return (add "_qs + file(text) + u") is missing value"_qs), u"true"_qs);
  EXPECT_EQ(keeper.tell(u"return index of (add %1 to playlist \"New\")"_qs.arg(file(path))), u"1"_qs);
  makeSong(u"in/deep/b.m4a"_qs, tagsOf(u"B"_qs, u"X"_qs, u"Y"_qs, 2));
  EXPECT_EQ(keeper.tell(u"return name of item 2 of (add %1)"_qs.arg(file(folder(u"in"_qs)))), u"B"_qs);
  EXPECT_EQ(keeper.namesIn(), (QStringList{u"A"_qs, u"B"_qs}));
  EXPECT_EQ(keeper.namesIn(list), QStringList{u"A"_qs});
}

TEST_F(ModelFiles, CopiesGoToFreePlacesOfTheMediaFolder) {
  keeper.settings.copyToMediaFolder = true;
  const QString first = makeSong(u"in/a.mp3"_qs, tagsOf(u"A/B?"_qs, u".X."_qs, u""_qs, 1));
  const QString second = makeSong(u"in/b.mp3"_qs, tagsOf(u"A/B?"_qs, u".X."_qs, u""_qs, 1), 3);
  add(first);
  add(second);
  const QStringList expected{u"_X_/Unknown Album/01 A_B_ 1.mp3"_qs, u"_X_/Unknown Album/01 A_B_.mp3"_qs};
  EXPECT_EQ(filesBelow(media), expected);
  EXPECT_EQ(readFile(pathOf(1)), readFile(first));
  EXPECT_EQ(readFile(pathOf(2)), readFile(second));
  EXPECT_EQ(pathOf(2), folder(media + u'/' + expected[0]));
}

TEST_F(ModelFiles, ACopyThatFailsLeavesNoTrackAndNoHalfFile) {
  keeper.settings.copyToMediaFolder = true;
  const QString path = makeSong(u"in/a.mp3"_qs, tagsOf(u"A"_qs, u"X"_qs, u"Y"_qs, 1));
  writeFile(media + u"/X"_qs, "a file where the artist's folder should be");
  EXPECT_EQ(add(path), u"error -10000"_qs);
  EXPECT_TRUE(keeper.namesIn().isEmpty());
  EXPECT_EQ(filesBelow(media), QStringList{u"X"_qs});
}

TEST_F(ModelFiles, OrganisedFilesFollowTheirNamesAndReplaceNothing) {
  keeper.settings.organise = true;
  const QString inside = makeSong(media + u"/Old/Album/x.mp3"_qs, tagsOf(u"A"_qs, u"X"_qs, u"Y"_qs, 1));
  const QString outside = makeSong(u"in/b.mp3"_qs, tagsOf(u"B"_qs, u"X"_qs, u"Y"_qs, 1));
  const QByteArray bytes = readFile(inside);
  writeFile(media + u"/New/Y/01 A.mp3"_qs, "somebody else");
  add(inside);
  add(outside);
  keeper.tell(u"set artist of track 1 to \"New\"\nset artist of track 2 to \"New\""_qs);
  EXPECT_EQ(pathOf(1), folder(media + u"/New/Y/01 A 1.mp3"_qs));
  EXPECT_EQ(readFile(pathOf(1)), bytes);
  EXPECT_EQ(pathOf(2), outside);
  EXPECT_EQ(filesBelow(media), (QStringList{u"New/Y/01 A 1.mp3"_qs, u"New/Y/01 A.mp3"_qs}));
  EXPECT_FALSE(QFileInfo::exists(folder(media + u"/Old"_qs)));
  keeper.tell(u"set name of track 1 to \"a\""_qs);
  EXPECT_EQ(pathOf(1), folder(media + u"/New/Y/01 a.mp3"_qs));
}

TEST_F(ModelFiles, AFileThatCannotMoveStaysAndTheChangeStands) {
  keeper.settings.organise = true;
  const QString path = makeSong(media + u"/X/Y/01 A.mp3"_qs, tagsOf(u"A"_qs, u"X"_qs, u"Y"_qs, 1));
  writeFile(media + u"/New"_qs, "in the way");
  add(path);
  EXPECT_EQ(keeper.tell(u"set artist of track 1 to \"New\"\nreturn artist of track 1"_qs), u"New"_qs);
  EXPECT_EQ(pathOf(1), path);
  EXPECT_TRUE(logContains(u"organise"_qs));
}

TEST_F(ModelFiles, ARefreshTakesNewTagsButNotOverTheUsersOwnNames) {
  const QString path = makeSong(u"in/a.mp3"_qs, tagsOf(u"A"_qs, u"X"_qs, u"Y"_qs, 1));
  const QString id = add(path);
  keeper.tell(u"set artist of track 1 to \"Mine\""_qs);
  makeSong(u"in/a.mp3"_qs, tagsOf(u"A2"_qs, u"X"_qs, u"Y"_qs, 1), 3);
  keeper.tell(u"refresh track 1"_qs);
  EXPECT_EQ(keeper.trackValue(id, keys::Name).toText(), u"A2"_qs);
  EXPECT_EQ(keeper.trackValue(id, keys::Artist).toText(), u"Mine"_qs);
  EXPECT_NEAR(double(keeper.trackValue(id, keys::TotalTime).toInteger()), 3000, 200);
  makeSong(u"in/a.mp3"_qs, tagsOf(u"A2"_qs, u"Theirs"_qs, u"Y"_qs, 1), 4);
  keeper.tell(u"refresh track 1"_qs);
  EXPECT_EQ(keeper.trackValue(id, keys::Artist).toText(), u"Theirs"_qs);
}

TEST_F(ModelFiles, NamesStayOutOfTheFileAndLyricsGoIntoIt) {
  for (const QString &name : {u"in/a.mp3"_qs, u"in/b.m4a"_qs}) {
    const QString path = makeSong(name, tagsOf(u"A"_qs, u"X"_qs, u"Y"_qs, 1));
    const QByteArray before = readFile(path);
    add(path);
    keeper.tell(u"set name of last track to \"Other\""_qs);
    EXPECT_EQ(readFile(path), before);
    EXPECT_EQ(keeper.tell(u"set lyrics of last track to \"la\nla\"\nreturn lyrics of last track"_qs),
              u"la\nla"_qs);
    const AudioInfoTagPtr tag = AudioInfoTag::tagWithPath(path);
    EXPECT_EQ(tag->lyrics(), u"la\nla"_qs);
    EXPECT_EQ(tag->title(), u"A"_qs);
    EXPECT_EQ(keeper.tell(u"return size of last track"_qs), QString::number(QFileInfo(path).size()));
  }
}

TEST_F(ModelFiles, ArtworksAreCountedCopiedAndDeletedInTheFile) {
  SongTags tags = tagsOf(u"A"_qs, u"X"_qs, u"Y"_qs, 1);
  tags.artwork = makeCover(16, 0x102030, 0xffffff);
  add(makeSong(u"in/a.mp3"_qs, tags));
  tags.artwork = {};
  const QString plain = makeSong(u"in/b.m4a"_qs, tags);
  add(plain);
  expectAll({
      {u"return (count of artworks of track 1) * 10 + (count of artworks of track 2)"_qs, u"10"_qs},
      {u"return exists artwork 1 of track 2"_qs, u"false"_qs},
      {u"make new artwork at track 2 with properties {data:data of artwork 1 of track 1}\nreturn count of "
       u"artworks of "
       u"track 2"_qs,
       u"1"_qs},
      {u"set raw data of artwork 1 of track 2 to raw data of artwork 1 of track 1\nreturn count of artworks of track 2"_qs,
       u"1"_qs},
      {u"return kind of (get properties of artwork 1 of track 2)"_qs, u"0"_qs},
      {u"set kind of artwork 1 of track 2 to 4"_qs, u"error -10003"_qs},
      {u"set artist of artwork 1 of track 2 to \"x\""_qs, u"error -1728"_qs},
      {u"delete every artwork of track 1\nreturn count of artworks of track 1"_qs, u"0"_qs},
      {u"delete artwork 1 of track 1"_qs, u"error -1728"_qs},
  });
  EXPECT_EQ(AudioInfoTag::tagWithPath(plain)->numberOfImages(), 1);
}

TEST_F(ModelFiles, ATrackTakesAnotherFile) {
  add(makeSong(u"in/a.mp3"_qs, tagsOf(u"A"_qs, u"X"_qs, u"Y"_qs, 1)));
  const QString other = makeSong(u"in/with blank & more.mp3"_qs, tagsOf(u"B"_qs, u"X"_qs, u"Y"_qs, 1), 5);
  EXPECT_EQ(keeper.tell(u"set location of track 1 to %1\nrefresh track 1\nreturn name of track 1"_qs.arg(
                file(other))),
            u"B"_qs);
  EXPECT_EQ(pathOf(1), other);
  EXPECT_EQ(keeper.tell(u"set location of track 1 to "_qs + file(folder(u"in"_qs))), u"error -10006"_qs);
  ASSERT_TRUE(QFile::remove(other));
  EXPECT_EQ(keeper.tell(u"return (location of track 1) is missing value"_qs), u"true"_qs);
}

TEST(MediaFolder, NamesAreCutAndCleanedForEveryFileSystem) {
  const std::vector<std::pair<QString, QString>> names = {{u"AC/DC: live?"_qs, u"AC_DC_ live_"_qs},
                                                          {u"..."_qs, u"_._"_qs},
                                                          {u" a. "_qs, u"a_"_qs},
                                                          {u"a\u0001b"_qs, u"a_b"_qs},
                                                          {u"  "_qs, u""_qs},
                                                          {u"ü"_qs, u"ü"_qs}};
  for (const auto &[name, cleaned] : names) EXPECT_EQ(mediaFolder::cleaned(name), cleaned);
  EXPECT_LE(mediaFolder::cleaned(QString(500, u'ü')).toUtf8().size(), 200);
}
