#include "audio/AudioInfoTag.h"

#include <QBuffer>
#include <QImage>
#include <QtEndian>

#include "audio/mp4/AACInfoTag.h"
#include "audio/tags/MP3InfoTag.h"
#include "tests/fixtures/TestPlatform.h"
#include "values/Keys.h"

namespace {

using Infotag = TestPlatform;

/// A tag with one text set.
std::unique_ptr<AACInfoTag> tagWith(void (AACInfoTag::*set)(const QString &), const QString &text) {
  auto tag = std::make_unique<AACInfoTag>();
  ((*tag).*set)(text);
  return tag;
}

Dictionary entry(std::initializer_list<std::pair<Key, Value>> members) {
  const Dictionary made = Dictionary::make();
  for (const auto &[key, value] : members) made.set(key, value);
  return made;
}

QByteArray pngOf(int size, Qt::GlobalColor color) {
  QImage image(size, size, QImage::Format_RGB32);
  image.fill(color);
  QBuffer bytes;
  image.save(&bytes, "PNG");
  return bytes.data();
}

TEST_F(Infotag, TracksAreTakenApart) {
  const struct {
    QString track;
    int number, total;
  } cases[] = {{u"3/12"_qs, 3, 12}, {u"/12"_qs, 0, 12}, {u"3/"_qs, 3, 3},
               {u"7"_qs, 7, 7},     {QString(), 0, 0},  {u"99999999999/x"_qs, 2147483647, 0}};
  for (const auto &one : cases) {
    const auto tag = tagWith(&AACInfoTag::setTrack, one.track);
    EXPECT_EQ(tag->trackNumber(), one.number) << qPrintable(one.track);
    EXPECT_EQ(tag->numberOfTracksOnAlbum(), one.total) << qPrintable(one.track);
  }
}

TEST_F(Infotag, ArticlesBehindACommaGoToTheFrontAndBack) {
  const struct {
    QString artist, normalized, reversed;
  } cases[] = {{u"Beatles, The"_qs, u"The Beatles"_qs, u"Beatles, The"_qs},
               {u"Beatles,  The Live"_qs, u"The Beatles Live"_qs, u"Beatles,  The Live"_qs},
               {u"The Beatles"_qs, u"The Beatles"_qs, u"Beatles, The"_qs},
               {u"Of the Hill "_qs, u"Of the Hill "_qs, u", Of the Hill"_qs},
               {u"Abba"_qs, u"Abba"_qs, u"Abba"_qs},
               {u"Abba,"_qs, u" Abba"_qs, u"Abba,"_qs}};
  for (const auto &one : cases) {
    const auto tag = tagWith(&AACInfoTag::setArtist, one.artist);
    EXPECT_EQ(tag->normalizedArtist(), one.normalized) << qPrintable(one.artist);
    EXPECT_EQ(tag->reversedArtist(), one.reversed) << qPrintable(one.artist);
  }
}

TEST_F(Infotag, DurationsAreRoundedUpToWholeSeconds) {
  const struct {
    double milliseconds;
    QString text;
  } cases[] = {{3661500 + 750, u"1:01:02"_qs},    {59200 + 750, u"1:00"_qs}, {5750, u"0:05"_qs},
               {3600750, u"1:00:00"_qs},          {750, QString()},          {0, QString()},
               {36000750 + 58500, u"10:00:59"_qs}};
  for (const auto &one : cases) {
    AudioInfoTag tag;
    tag.gatherFileMetadataFromiTunesTrackInfo(entry({{keys::TotalTime, one.milliseconds}}));
    EXPECT_EQ(tag.formattedDuration(), one.text) << one.milliseconds;
  }
  const AudioInfoTag none;
  EXPECT_EQ(none.duration(), -1.0F);
  EXPECT_EQ(none.bitrate(), -1);
}

TEST_F(Infotag, ANameLosesAnExtensionOfThreeLetters) {
  const std::pair<QString, QString> cases[] = {{u"/m/Song.mp3"_qs, u"Song"_qs},
                                               {u"/m/Song.flac"_qs, u"Song.flac"_qs},
                                               {u"/m/.mp3"_qs, u".mp3"_qs},
                                               {u"/m/ a.m4a "_qs, u"a"_qs}};
  for (const auto &[path, title] : cases) {
    AACInfoTag tag;
    tag.gatherTagsFromPathname(path);
    EXPECT_EQ(tag.title(), title);
    EXPECT_TRUE(tag.tagHasBeenModified());
  }
}

TEST_F(Infotag, RepeatedGenresGoAndNumbersStay) {
  const std::pair<QString, QString> cases[] = {{u"Rock/Pop/Rock"_qs, u"Rock/Pop"_qs},
                                               {u"(0"_qs, u"(0"_qs},
                                               {u"(17)Rock"_qs, u"(17)Rock"_qs},
                                               {u"17"_qs, u"17"_qs},
                                               {u"//"_qs, u""_qs},
                                               {u"a//b/"_qs, u"a//b"_qs}};
  for (const auto &[stored, expanded] : cases) EXPECT_EQ(AudioInfoTag::expandedGenres(stored), expanded);
  EXPECT_TRUE(AudioInfoTag::expandedGenres({}).isNull());
  EXPECT_FALSE(AudioInfoTag::expandedGenres(u""_qs).isNull());
  EXPECT_EQ(AudioInfoTag::indexOfGenre(u"Rock"_qs), kNotFound);
  EXPECT_TRUE(AudioInfoTag::standardizedGenreFrom(u"some Rock"_qs).isNull());
}

TEST_F(Infotag, ALibraryEntryMakesALazyTagWithoutTheFile) {
  const auto made = [](const Dictionary &track, const QString &path = u"/gone/a.MP3"_qs) {
    return AudioInfoTag::tagWithiTunesTrackInfoPath(track, path);
  };
  const auto tag = made(entry({{keys::Name, u"N"_qs},
                               {keys::Year, 2050},
                               {keys::TrackNumber, 9},
                               {keys::TrackCount, 5},
                               {keys::Compilation, false},
                               {keys::ArtworkCount, 2}}));
  ASSERT_TRUE(tag);
  EXPECT_EQ(tag->title(), u"N"_qs);
  EXPECT_TRUE(tag->year().isNull());
  EXPECT_EQ(tag->track(), u"9"_qs);
  EXPECT_TRUE(tag->isPartOfCompilation());
  EXPECT_EQ(tag->numberOfImages(), 2);
  EXPECT_TRUE(tag->isLazy());
  EXPECT_FALSE(tag->tagHasBeenModified());
  const auto full =
      made(entry({{keys::Year, 2049}, {keys::TrackNumber, 9}, {keys::TrackCount, 9}}), u"/a.m4p"_qs);
  EXPECT_EQ(full->year(), u"2049"_qs);
  EXPECT_EQ(full->track(), u"9/9"_qs);
  EXPECT_EQ(full->numberOfImages(), -1);
  EXPECT_FALSE(made(entry({}), u"/a.flac"_qs));
  EXPECT_FALSE(made(entry({}), QString()));
}

TEST_F(Infotag, ArtworkFilesAreTakenWithinTheirBounds) {
  const auto artwork = [this](quint32 header, const char *kind, int size) {
    QByteArray bytes(size, 'x');
    qToBigEndian(header, bytes.data());
    if (size > int(header) + 52) bytes.replace(int(header) + 48, 4, kind);
    AACInfoTag tag;
    tag.addiTunesArtworkAtPath(writeFile(u"music/a.itc"_qs, bytes));
    return tag.images();
  };
  const auto png = artwork(10, "PNGf", 1034);
  ASSERT_EQ(png.size(), 1U);
  EXPECT_EQ(png[0]->mimeFormat(), u"image/png"_qs);
  EXPECT_EQ(png[0]->imageData().size(), 1034 - 70);
  MP3InfoTag mpeg;
  mpeg.addiTunesArtworkAtPath(folder(u"music/a.itc"_qs));
  EXPECT_TRUE(mpeg.numberOfImages() == 1 && mpeg.frames().empty());
  mpeg.addImage(ID3Image::imageWithDataMimeType("x", {}));
  EXPECT_TRUE(mpeg.numberOfImages() == 2 && mpeg.frames().size() == 2)
      << "the file's picture becomes one of the tag's";
  EXPECT_EQ(artwork(10, "PNGx", 1034)[0]->mimeFormat(), u"image/jpeg"_qs);
  EXPECT_TRUE(artwork(11, "PNGf", 1034).empty());
  EXPECT_TRUE(artwork(0xFFFFFFFF, "PNGf", 1034).empty());
  EXPECT_TRUE(artwork(0, "PNGf", 1023).empty());
}

TEST_F(Infotag, AnIconIsMadeOnceForAPictureAndAgainWhenTooLarge) {
  AACInfoTag first, second;
  const QByteArray red = pngOf(64, Qt::red);
  first.addImage(ID3Image::imageWithDataMimeType(red, {}));
  second.addImage(ID3Image::imageWithDataMimeType(red, {}));
  const QByteArray large = first.imageIconNoLargerThan(32, 32);
  EXPECT_FALSE(large.isEmpty());
  EXPECT_EQ(second.imageIconNoLargerThan(8, 8), large) << "the memo does not look at the size";
  AACInfoTag other;
  other.addImage(ID3Image::imageWithDataMimeType(pngOf(64, Qt::blue), {}));
  EXPECT_NE(other.imageIconNoLargerThan(8, 8), large);
  EXPECT_NE(first.imageIconNoLargerThan(8, 8), large) << "too large: made anew";
  first.removeAllImages();
  EXPECT_TRUE(AACInfoTag().imageIconNoLargerThan(8, 8).isEmpty());
}

TEST_F(Infotag, AnArchiveKeepsPlaylistIndexAndChange) {
  AACInfoTag tag, again;
  EXPECT_EQ(tag.playlistIndex(), kNotFound);
  tag.setTitle(u"t"_qs);
  tag.setPlayListAndIndex(u"List"_qs, 7);
  again.decode(tag.encode());
  EXPECT_EQ(again.playlist(), u"List"_qs);
  EXPECT_EQ(again.playlistIndex(), 7);
  EXPECT_TRUE(again.tagHasBeenModified());
  EXPECT_TRUE(tag.matchString(u"T"_qs));
  EXPECT_FALSE(tag.matchString(u""_qs));
}

}  // namespace
