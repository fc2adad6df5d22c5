// What is written here, as a reader knows it that shares no code with this one.

#include <QProcess>
#include <QStandardPaths>

#include "tests/audio/ID3Fixture.h"

namespace {

/// Frames of silence: MPEG 1, layer 3, 128 kbit/s, 44,100 Hz, two channels.
QByteArray silentFrames(int count) {
  constexpr int kFrame = 417, kHeader = 4;
  return (id3::bytes("\xFF\xFB\x90\x00") + QByteArray(kFrame - kHeader, '\0')).repeated(count);
}

QByteArray onePixel() {
  return QByteArray::fromBase64(
      "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==");
}

class ID3Interoperation : public ID3Fixture {
 protected:
  void SetUp() override {
    prober = QStandardPaths::findExecutable(QStringLiteral("ffprobe"));
    ASSERT_FALSE(prober.isEmpty()) << "ffmpeg is not installed";
  }

  /// The lines "codec_name=...", "TAG:title=..." that the other reader has for a file.
  QStringList probed(const QString &path) const {
    QProcess process;
    process.start(prober,
                  {u"-v"_qs, u"error"_qs, u"-show_entries"_qs,
                   u"stream=codec_name:format_tags=title,artist,album,track,date,genre,compilation"_qs,
                   u"-of"_qs, u"default=nw=1"_qs, path});
    EXPECT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.readAllStandardError(), QByteArray());
    QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    lines.sort();
    return lines;
  }

  QString prober;
};

}  // namespace

TEST_F(ID3Interoperation, AnotherReaderFindsTheSameTextsAndThePicture) {
  const QByteArray song = silentFrames(80);
  const QByteArray block = id3::block({{3, "Old title"}});
  const QString title = QString(45, u't') + u" Café"_qs;
  for (const QByteArray &start :
       {song, id3::tag(2, id3::frame22("XYZ", "abc")) + song,
        id3::tag(3, id3::frame23("PRIV", QByteArray(300, 'x'))) + song + block,
        id3::tag(4, id3::frame24("PRIV", QByteArray(300, 'x'))) + song, song + block}) {
    const QString path = file(start);
    const TagPtr tag = MP3InfoTag::tagWithMPEGFile(path);
    ASSERT_TRUE(tag);
    tag->setTitle(title);
    tag->setArtist(u"Artist"_qs);
    tag->setAlbum(u"Album"_qs);
    tag->setTrack(u"3/12"_qs);
    tag->setYear(u"2004"_qs);
    tag->setGenres(u"Rock/Pop"_qs);
    tag->addImage(ID3Image::imageWithDataMimeType(onePixel(), {}));
    QString error;
    ASSERT_TRUE(tag->modifySongFileAtPathError(path, &error)) << error.toStdString();
    EXPECT_EQ(probed(path), QStringList({u"TAG:album=Album"_qs, u"TAG:artist=Artist"_qs, u"TAG:date=2004"_qs,
                                         u"TAG:genre=Rock/Pop"_qs, u"TAG:title="_qs + title,
                                         u"TAG:track=3/12"_qs, u"codec_name=mp3"_qs, u"codec_name=png"_qs}))
        << tag->writeVersion().toStdString();
  }
  const QString path = file(song + block);
  const TagPtr old = MP3InfoTag::tagWithMPEGFile(path);
  old->setTitle(u"New title"_qs);
  old->setTrack(u"7"_qs);
  ASSERT_TRUE(old->modifySongFileAtPathError(path, nullptr));
  EXPECT_EQ(probed(path), QStringList({u"TAG:title=New title"_qs, u"TAG:track=7"_qs, u"codec_name=mp3"_qs}));
}
