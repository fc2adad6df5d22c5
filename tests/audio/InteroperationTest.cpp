// Files of another program are read as it says, and what is written here is read by two others: ffprobe and
// TagLib, which share no code with each other or with this.
//
// Where they differ by design:
// - a title that is not there is made of the file's name;
// - a duration in an MPEG file is whole seconds, cut off; without a Xing header, and with one that is named
//   "Info", it is reckoned from the file's size and the first frame's bit rate;
// - the bit rate of an MPEG file is that of its first frame, also where the rate varies; that of an MP4 file
//   the highest that its "esds" tells, or where there is none, in lossless files, an estimate from the size
//   of the audio;
// - a lossless file has no sample rate: only the sample entries "mp4a" and "drms" are asked;
// - a year that is set in a version 2.3 tag goes into the frame of version 2.4;
// - every picture of an MP4 file is marked as JPEG: readers look at its bytes;
// - lyrics are of the language "eng", without a description, and fewer than two characters are not read.

#include <fileref.h>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <tpropertymap.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>

#include "audio/AudioInfoTag.h"
#include "audio/SongFile.h"
#include "tests/audio/ID3Builder.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

/// What a file's readers are asked for.
struct Texts {
  QString title, artist, album, track, year, genre;
  bool operator==(const Texts &) const = default;
};

void PrintTo(const Texts &texts, std::ostream *stream) {
  *stream << QStringList{texts.title, texts.artist, texts.album, texts.track, texts.year, texts.genre}
                 .join(u'|')
                 .toStdString();
}

const Texts kTexts{u"Zo\u00eb's \u4e2d\u6587 song"_qs,
                   u"Bj\u00f6rk & friends"_qs,
                   u"An album"_qs,
                   u"3/12"_qs,
                   u"1998"_qs,
                   u"Trip Hop"_qs};

QString qt(const TagLib::String &text) {
  return QString::fromUtf8(text.toCString(true));
}

/// A sine of a few seconds, encoded by ffmpeg.
struct Recipe {
  const char *file;
  const char *options;
  /// What this system tells of it; 0 for nothing.
  int bitRate;
};

class Interoperation : public TestPlatform {
 protected:
  void SetUp() override {
    ASSERT_FALSE(QStandardPaths::findExecutable(u"ffmpeg"_qs).isEmpty()) << "ffmpeg is not installed";
  }

  static QByteArray outputOf(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(60000)) << program.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
  }
  static QByteArray ffmpeg(const QStringList &arguments) {
    return outputOf(u"ffmpeg"_qs, QStringList{u"-v"_qs, u"error"_qs, u"-nostdin"_qs, u"-y"_qs} + arguments);
  }
  QString made(const Recipe &recipe, double seconds = 3.5) const {
    const QString path = folder(u"music/"_qs + QString::fromLatin1(recipe.file));
    ffmpeg(QStringList{u"-f"_qs, u"lavfi"_qs, u"-i"_qs, u"sine=frequency=440:duration=%1"_qs.arg(seconds)} +
           QString::fromLatin1(recipe.options).split(u' ') + QStringList{path});
    // The encoder knows no tags of version 2.2.
    if (path.endsWith(u"version2.mp3")) {
      writeFile(path, id3::tag(2, id3::frame22("TT2", id3::bytes("\0Old"))) + readFile(path));
    }
    return path;
  }
  QByteArray picture(const QString &name, const QString &color) const {
    const QString path = folder(name);
    ffmpeg({u"-f"_qs, u"lavfi"_qs, u"-i"_qs, u"color=%1:size=32x32"_qs.arg(color), u"-frames:v"_qs, u"1"_qs,
            path});
    return readFile(path);
  }
  static QJsonObject probed(const QString &path) {
    const QByteArray told = outputOf(u"ffprobe"_qs, {u"-v"_qs, u"error"_qs, u"-show_format"_qs,
                                                     u"-show_streams"_qs, u"-of"_qs, u"json"_qs, path});
    return QJsonDocument::fromJson(told).object();
  }
  static QJsonObject audioStreamOf(const QJsonObject &facts) {
    for (const QJsonValue &stream : facts[u"streams"_qs].toArray()) {
      if (stream[u"codec_type"_qs] == u"audio"_qs) return stream.toObject();
    }
    return {};
  }
  static Texts textsByProbe(const QString &path) {
    const QJsonObject tags = probed(path)[u"format"_qs].toObject()[u"tags"_qs].toObject();
    const auto text = [&tags](const QString &name) { return tags[name].toString(); };
    return {text(u"title"_qs), text(u"artist"_qs), text(u"album"_qs),
            text(u"track"_qs), text(u"date"_qs),   text(u"genre"_qs)};
  }
  static Texts textsByTagLib(const QString &path) {
    const TagLib::FileRef file(path.toUtf8().constData(), false);
    if (file.isNull()) return {};
    const TagLib::PropertyMap map = file.file()->properties();
    const auto text = [&map](const char *name) { return qt(map[name].toString()); };
    return {text("TITLE"), text("ARTIST"), text("ALBUM"), text("TRACKNUMBER"), text("DATE"), text("GENRE")};
  }
  static std::vector<QByteArray> picturesByTagLib(const QString &path) {
    std::vector<QByteArray> pictures;
    const auto add = [&pictures](const TagLib::ByteVector &bytes) {
      pictures.emplace_back(bytes.data(), qsizetype(bytes.size()));
    };
    const QByteArray name = path.toUtf8();
    if (path.endsWith(u"m4a")) {
      TagLib::MP4::File file(name.constData(), false);
      for (const TagLib::MP4::CoverArt &cover : file.tag()->item("covr").toCoverArtList()) add(cover.data());
      return pictures;
    }
    TagLib::MPEG::File file(name.constData(), false);
    for (const TagLib::ID3v2::Frame *frame : file.ID3v2Tag()->frameListMap()["APIC"]) {
      const TagLib::ByteVector bytes = frame->render();
      pictures.emplace_back(bytes.data(), qsizetype(bytes.size()));
    }
    return pictures;
  }
  /// What a file's audio packets are, as ffmpeg finds them.
  static QByteArray audioDigest(const QString &path) {
    return ffmpeg(
        {u"-i"_qs, path, u"-map"_qs, u"0:a"_qs, u"-c"_qs, u"copy"_qs, u"-f"_qs, u"md5"_qs, u"-"_qs});
  }
  /// Writes through a song file; the reason in `error`.
  bool change(const QString &path, const std::function<void(AudioInfoTag &)> &edit) {
    const SongFilePtr song = SongFile::songWithPath(path);
    if (!song || !song->infotag()) return false;
    edit(*song->infotag());
    return song->writeToOriginalPathWithErrorRefreshiTunes(&error, false);
  }

  QString error;
};

void setAll(AudioInfoTag &tag) {
  tag.setTitle(kTexts.title);
  tag.setArtist(kTexts.artist);
  tag.setAlbum(kTexts.album);
  tag.setTrack(kTexts.track);
  tag.setYear(kTexts.year);
  tag.setGenres(kTexts.genre);
}

Texts textsOf(const AudioInfoTag &tag) {
  return {tag.title(), tag.artist(), tag.album(), tag.track(), tag.year(), tag.genres()};
}

const Recipe kRecipes[] = {
    {"cbr.mp3", "-c:a libmp3lame -b:a 128k -write_xing 0", 128},
    {"xing.mp3", "-c:a libmp3lame -b:a 128k -write_xing 1", 128},
    {"version3.mp3", "-c:a libmp3lame -b:a 96k -id3v2_version 3 -write_id3v1 1 -metadata title=Old", 96},
    {"version4.mp3", "-c:a libmp3lame -b:a 160k -id3v2_version 4 -metadata title=Old -metadata date=1990",
     160},
    {"untagged.mp3", "-c:a libmp3lame -b:a 128k -id3v2_version 0 -write_xing 0", 128},
    {"version2.mp3", "-c:a libmp3lame -b:a 128k -id3v2_version 0 -write_xing 0", 128},
    {"version1.mp3", "-c:a libmp3lame -b:a 128k -id3v2_version 0 -write_id3v1 1 -metadata title=Old", 128},
    {"plain.m4a", "-c:a aac -b:a 128k -metadata title=Old", 128},
    {"faststart.m4a", "-c:a aac -b:a 128k -movflags +faststart -metadata title=Old -metadata genre=Pop", 128},
    {"lossless.m4a", "-c:a alac -sample_fmt s16p -movflags +faststart -metadata title=Old", 0},
};

}  // namespace

TEST_F(Interoperation, FactsOfTheAudioAreThoseOfAnotherReader) {
  for (const Recipe &recipe : kRecipes) {
    SCOPED_TRACE(recipe.file);
    const QString path = made(recipe);
    const AudioInfoTagPtr tag = AudioInfoTag::tagWithPath(path);
    ASSERT_TRUE(tag);
    const QJsonObject facts = probed(path), stream = audioStreamOf(facts);
    const double seconds = facts[u"format"_qs].toObject()[u"duration"_qs].toString().toDouble();
    ASSERT_GT(seconds, 3.0);
    const bool isMPEG = path.endsWith(u"mp3");
    EXPECT_GE(tag->duration(), seconds - (isMPEG ? 1.0 : 0.05));
    EXPECT_LE(tag->duration(), seconds + 0.05);
    const bool isLossless = stream[u"codec_name"_qs] == u"alac"_qs;
    EXPECT_EQ(tag->samplerate(), isLossless ? -1 : stream[u"sample_rate"_qs].toString().toInt());
    if (isLossless) {
      EXPECT_NEAR(tag->bitrate(), stream[u"bit_rate"_qs].toString().toInt() / 992.0, 2.0);
    } else {
      EXPECT_EQ(tag->bitrate(), recipe.bitRate);
    }
  }
}

TEST_F(Interoperation, AVaryingBitRateHasTheLengthThatItsXingHeaderTells) {
  const QString path = made({"vbr.mp3", "-c:a libmp3lame -q:a 4 -write_xing 1", 0}, 12.4);
  const AudioInfoTagPtr tag = AudioInfoTag::tagWithPath(path);
  ASSERT_TRUE(tag);
  EXPECT_EQ(tag->duration(), 12.0F);
  EXPECT_EQ(tag->samplerate(), 44100);
}

TEST_F(Interoperation, TextsOfAnotherProgramAreReadAsItWroteThem) {
  const QString metadata =
      u"-metadata title=T -metadata artist=A -metadata album=B -metadata track=4/9 "
      "-metadata date=2001 -metadata genre=G"_qs;
  const Texts expected{u"T"_qs, u"A"_qs, u"B"_qs, u"4/9"_qs, u"2001"_qs, u"G"_qs};
  for (const char *const file : {"-id3v2_version 3 a.mp3", "-id3v2_version 4 b.mp3", "-c:a aac c.m4a"}) {
    const QStringList words = QString::fromLatin1(file).split(u' ');
    const QByteArray options = (words.sliced(0, words.size() - 1).join(u' ') + u' ' + metadata).toLatin1();
    const QString path = made({words.last().toLatin1().constData(), options.constData(), 0});
    const AudioInfoTagPtr tag = AudioInfoTag::tagWithPath(path);
    ASSERT_TRUE(tag) << file;
    EXPECT_EQ(textsOf(*tag), expected) << file;
  }
}

TEST_F(Interoperation, WhatIsWrittenHereIsReadByOthersAndTheAudioStaysTheSame) {
  const QByteArray png = picture(u"cover.png"_qs, u"red"_qs), jpeg = picture(u"cover.jpg"_qs, u"blue"_qs);
  ASSERT_FALSE(png.isEmpty() || jpeg.isEmpty());
  for (const Recipe &recipe : kRecipes) {
    SCOPED_TRACE(recipe.file);
    const QString path = made(recipe);
    const QByteArray audio = audioDigest(path);
    ASSERT_TRUE(change(path, [&](AudioInfoTag &tag) {
      setAll(tag);
      tag.addImage(ID3Image::imageWithDataMimeType(png, u"image/png"_qs));
      tag.addImage(ID3Image::imageWithDataMimeType(jpeg, u"image/jpeg"_qs));
    })) << qPrintable(error);
    EXPECT_EQ(audioDigest(path), audio);
    const AudioInfoTagPtr again = AudioInfoTag::tagWithPath(path);
    ASSERT_TRUE(again);
    EXPECT_EQ(textsOf(*again), kTexts);
    EXPECT_EQ(textsByProbe(path), kTexts);
    EXPECT_EQ(textsByTagLib(path), kTexts);
    const std::vector<QByteArray> pictures = picturesByTagLib(path);
    ASSERT_EQ(pictures.size(), 2U);
    EXPECT_TRUE(pictures[0].endsWith(png));
    EXPECT_TRUE(pictures[1].endsWith(jpeg));
    EXPECT_EQ(probed(path)[u"streams"_qs].toArray().size(), 3) << "the audio and two pictures";
    // Longer and shorter tags in turn.
    ASSERT_TRUE(change(path, [](AudioInfoTag &tag) { tag.setLyrics(QString(70000, u'l')); }))
        << qPrintable(error);
    ASSERT_TRUE(change(path, [](AudioInfoTag &tag) { tag.removeAllImages(); })) << qPrintable(error);
    ASSERT_TRUE(change(path, [](AudioInfoTag &tag) { tag.setLyrics({}); })) << qPrintable(error);
    EXPECT_EQ(audioDigest(path), audio);
    EXPECT_EQ(textsByTagLib(path), kTexts);
    EXPECT_TRUE(picturesByTagLib(path).empty());
  }
}
