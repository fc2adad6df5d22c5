#include "audio/SongFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>

#include "tests/audio/ID3Builder.h"
#include "tests/audio/MP4Builder.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

using id3::bytes;
using id3::frame23;

/// Frames of 417 bytes that sniffing counts.
QByteArray mpegFrames(int count) {
  return (bytes("\xFF\xFB\x90\x00") + QByteArray(413, '\0')).repeated(count);
}

QByteArray movie() {
  return mp4::fileType() +
         mp4::atom("moov", {mp4::movieHeader(1, 1), mp4::track({}, mp4::chunkOffsets({})),
                            mp4::userData(mp4::text("\251nam", "Title"), mp4::free(100))}) +
         mp4::atom("mdat", QByteArray(9000, 'x'));
}

class Song : public TestPlatform {
 protected:
  QString file(const QByteArray &content, const QString &name = u"music/a.mp3"_qs) const {
    return writeFile(name, content);
  }
  QString song() const { return file(id3::tag(3, frame23("TIT2", bytes("\0A"))) + mpegFrames(60)); }
};

TEST_F(Song, OnlyARealFileOf255BytesIsOne) {
  EXPECT_FALSE(SongFile::songWithPath(file(QByteArray(254, 'x'))));
  EXPECT_TRUE(SongFile::songWithPath(file(QByteArray(255, 'x'))));
  const QString pipe = folder(u"music/pipe.mp3"_qs);
  ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  for (const QString &path : {folder(), folder(u"none.mp3"_qs), pipe, u"/dev/zero"_qs, QString()}) {
    EXPECT_FALSE(SongFile::songWithPath(path)) << qPrintable(path);
    EXPECT_FALSE(AudioInfoTag::tagWithPath(path)) << qPrintable(path);
    EXPECT_FALSE(SongFile::removeID3v2TagFromFileAtPath(path)) << qPrintable(path);
  }
}

TEST_F(Song, ContentDecidesWhatAFileHoldsAndThenItsName) {
  const QByteArray tag = id3::tag(3, frame23("PRIV", QByteArray(5000, 'x')));
  const struct {
    const char *what;
    QByteArray content;
    qint32 kind;
  } cases[] = {{"30 headers close together", mpegFrames(60), SongFile::kMPEGData},
               {"29 headers", mpegFrames(29) + QByteArray(20000, '\0'), SongFile::kUnknownData},
               {"behind a tag", tag + mpegFrames(60), SongFile::kMPEGData},
               {"a tag so large that the average waits",
                id3::tag(3, frame23("PRIV", QByteArray(60000, 'x'))) + mpegFrames(200), SongFile::kMPEGData},
               {"a tag that lies of its size", bytes("ID3\3\0\0\x7F\x7F\x7F\x7F") + mpegFrames(60),
                SongFile::kMPEGData},
               {"a movie", movie(), SongFile::kMP4Data},
               {"a movie behind a long audio", mp4::atom("mdat", QByteArray(510000, 'x')) + movie(),
                SongFile::kUnknownData},
               {"too short", mpegFrames(60).left(4095), SongFile::kUnknownData},
               {"nothing", QByteArray(), SongFile::kUnknownData}};
  for (const auto &one : cases)
    EXPECT_EQ(SongFile::songDataTypeAtPath(file(one.content)), one.kind) << one.what;
  EXPECT_EQ(AudioInfoTag::tagWithPath(file(movie()))->readVersion(), u"AAC"_qs) << "named .mp3";
  EXPECT_TRUE(SongFile::claimsToBeMP3(u"/a/Song.MP3"_qs));
  EXPECT_FALSE(SongFile::claimsToBeMP3(u"/a/.mp3"_qs));
  EXPECT_FALSE(SongFile::claimsToBeMP3(u"/a.mp3/b"_qs));
  EXPECT_TRUE(SongFile::claimsToBeAIFF(u"/a.b.AIFF"_qs));
}

TEST_F(Song, ATruncatedFileIsReadWithoutHarm) {
  const QByteArray tagged = id3::tag(3, frame23("TIT2", bytes("\0Title")) +
                                            frame23("APIC", id3::picture("image/png", 3, "c", "\x89PNG"))) +
                            id3::audio(300);
  for (const QByteArray &whole : {tagged, movie().left(1200)}) {
    for (qsizetype length = 0; length <= whole.size(); ++length) {
      for (const QString &name : {u"music/a.mp3"_qs, u"music/a.m4a"_qs}) {
        const auto tag = AudioInfoTag::tagWithPath(file(whole.first(length), name));
        EXPECT_TRUE(!tag || tag->numberOfArtworkBytes() <= quint64(length));
      }
    }
  }
}

TEST_F(Song, OnlyAHeldTagIsWrittenAndTheFileKeepsItsAttributes) {
  const QString path = song();
  ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0640), 0);
  const auto one = SongFile::songWithPath(path);
  EXPECT_FALSE(one->writeToOriginalPathWithErrorRefreshiTunes(nullptr, true)) << "no tag was built";
  EXPECT_EQ(one->activityStatus(), SongFile::kFailed);
  EXPECT_FALSE(one->canWriteToOriginalPath());
  one->infotag()->setTitle(u"Longer"_qs);
  EXPECT_EQ(one->activityStatus(), SongFile::kUsable);
  EXPECT_TRUE(one->writeToOriginalPathWithErrorRefreshiTunes(nullptr, true));
  EXPECT_EQ(QFile::permissions(path) & QFile::ReadGroup, QFile::ReadGroup);
  EXPECT_FALSE(one->refresh()) << "the date after the write was adopted";
  EXPECT_EQ(SongFile::songWithPath(path)->infotag()->title(), u"Longer"_qs);
  const auto broken =
      SongFile::songWithPath(file(mp4::atom("mdat", QByteArray(9000, 'x')), u"music/b.m4a"_qs));
  broken->infotag()->setTitle(u"x"_qs);
  EXPECT_FALSE(broken->writeToOriginalPathWithErrorRefreshiTunes(nullptr, false)) << "no place for a tag";
}

TEST_F(Song, AMovedFileIsFoundByItsReference) {
  const auto one = SongFile::songWithPath(song());
  one->setAliasFromPath();
  QDir(folder(u"music"_qs)).mkpath(u"Sub"_qs);
  for (const char *place : {"music/renamed.mp3", "music/Sub/a.mp3", "home/a.mp3"}) {
    ASSERT_TRUE(QFile::rename(one->path(), folder(QString::fromLatin1(place))));
    file(QByteArray(300, 'x'));  // another file in the first one's place
    one->updatePathFromAlias();
    EXPECT_EQ(one->path(), folder(QString::fromLatin1(place)));
    one->setPath(one->path());
    EXPECT_TRUE(one->hasAlias());
    QFile::remove(folder(u"music/a.mp3"_qs));
  }
  QFile::remove(one->path());
  EXPECT_FALSE(one->refresh());
  EXPECT_EQ(one->activityStatus(), SongFile::kFailed);
  one->setPath(u"/none"_qs);
  one->setAliasFromPath();
  EXPECT_FALSE(one->hasAlias()) << "nothing to refer to";
}

TEST_F(Song, AChangedFileLosesItsTagAndALazyTagMakesRoom) {
  const QString path = song();
  const auto one = SongFile::songWithPath(path);
  one->createLazyInfoTagFromDictionaryPath(Dictionary::make(), path);
  EXPECT_TRUE(one->infotag()->title().isNull());
  one->ensureInfotagIsReal();
  EXPECT_EQ(one->infotag()->title(), u"A"_qs);
  timespec times[2] = {{1, 0}, {1, 0}};
  ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
  EXPECT_TRUE(one->refresh());
  EXPECT_FALSE(one->hasInfotagCached());
  EXPECT_FALSE(one->refresh());
}

TEST_F(Song, OnlyAVersion24TagIsCutOff) {
  const QByteArray audio = id3::audio(500);
  const QByteArray young = id3::tag(4, id3::frame24("TIT2", bytes("\0A")));
  const std::pair<QByteArray, QByteArray> cases[] = {{young + audio, audio},
                                                     {id3::tag(3, frame23("TIT2", bytes("\0A"))) + audio, {}},
                                                     {young, {}},
                                                     {bytes("ID3\4\0\0\x7F\x7F\x7F\x7F") + audio, {}},
                                                     {bytes("ID3\4\0\0\0\0\0\0"), {}}};
  for (const auto &[before, after] : cases) {
    const QString path = file(before);
    EXPECT_EQ(SongFile::removeID3v2TagFromFileAtPath(path), !after.isNull());
    EXPECT_EQ(readFile(path), after.isNull() ? before : after);
  }
}

}  // namespace
