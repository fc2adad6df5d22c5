#include <QFile>

#include "audio/ByteView.h"
#include "audio/mp4/AACInfoTag.h"
#include "audio/mp4/Atom.h"
#include "audio/mp4/AtomWalk.h"
#include "audio/mp4/MP4TagWriter.h"
#include "tests/audio/MP4Builder.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

using namespace mp4;

const QByteArray kAudio = QByteArray("AUDIO").repeated(1000);

/// A whole small file: its movie in front of the audio, one chunk.
struct MovieFile {
  QByteArray items = text("\251nam", "Title");
  QByteArray behindList;
  QByteArray behindMovie;
  QByteArray sampleDescription = sampleTable("mp4a", 44100, 128000);
  bool audioFirst = false;

  QByteArray bytes() const {
    const auto movie = [this](quint32 offset) {
      return atom("moov", {movieHeader(1000, 60000), track(sampleDescription, chunkOffsets({offset})),
                           userData(items, behindList)});
    };
    const qsizetype front = fileType().size();
    if (audioFirst) return fileType() + atom("mdat", kAudio) + movie(quint32(front) + 8);
    const quint32 audio = quint32(front + movie(0).size() + behindMovie.size()) + 8;
    return fileType() + movie(audio) + behindMovie + atom("mdat", kAudio);
  }
};

class MP4Tag : public TestPlatform {
 protected:
  QString write(const QByteArray &bytes) const { return writeFile(QStringLiteral("music/a.m4a"), bytes); }
  std::unique_ptr<AACInfoTag> tagOf(const QByteArray &bytes) const {
    return AACInfoTag::tagWithMP4File(write(bytes));
  }
  std::unique_ptr<AACInfoTag> tagWith(const QByteArray &items) const {
    MovieFile file;
    file.items = items;
    return tagOf(file.bytes());
  }
  /// The audio that the first chunk offset of a file leads to.
  static QByteArray audioOf(const QByteArray &bytes) {
    const QByteArray table = atomwalk::atomDataInAtNamePath(QByteArrayView(bytes),
                                                            QStringLiteral("moov:trak:mdia:minf:stbl:stco"));
    return ByteView{bytes}.slice(ByteView{table}.u32(8), kAudio.size()).copy();
  }
  /// Writes the tag after a change and answers the file.
  QByteArray rewritten(const QByteArray &before, const std::function<void(AACInfoTag &)> &change,
                       bool expected = true) {
    const auto tag = tagOf(before);
    if (!tag) return {};
    change(*tag);
    error = QString();
    EXPECT_EQ(tag->modifySongFileAtPathError(folder(QStringLiteral("music/a.m4a")), &error), expected)
        << qPrintable(error);
    return readFile(folder(QStringLiteral("music/a.m4a")));
  }

  QString error;
};

const auto kLongerTitle = [](AACInfoTag &tag) { tag.setTitle(QStringLiteral("Title and ten")); };

TEST_F(MP4Tag, ItemsAreReadByTheirRules) {
  struct Case {
    QByteArray items;
    QString (AACInfoTag::*value)() const;
    QString expected;
  };
  const auto number = [](const char *name, const char *bytes, int length) {
    return item(name, QByteArray(bytes, length), 0);
  };
  const Case cases[] = {
      {text("\251nam", "Ünï"), &AACInfoTag::title, QStringLiteral("Ünï")},
      {text("\251nam", ""), &AACInfoTag::title, QString()},
      {text("\251nam", "\xFF"), &AACInfoTag::title, QString()},
      {text("\251day", "2004-05-01T07:00:00Z"), &AACInfoTag::year, QStringLiteral("2004")},
      {text("\251day", "99"), &AACInfoTag::year, QString()},
      {number("trkn", "\0\0\0\3\0\0\0\0", 8), &AACInfoTag::track, QStringLiteral("3")},
      {number("trkn", "\0\0\0\3\0\014\0\0", 8), &AACInfoTag::track, QStringLiteral("3/12")},
      {number("trkn", "\0\0\0\0\0\014\0\0", 8), &AACInfoTag::track, QString()},
      {number("trkn", "\0\0\0\3\0", 5), &AACInfoTag::track, QStringLiteral("3")},
      {number("trkn", "\0\0\0", 3), &AACInfoTag::track, QString()},
      {number("gnre", "\0\021", 2), &AACInfoTag::genres, QStringLiteral("(16)")},
      {number("gnre", "\0\0", 2) + text("\251gen", "Jazz/Pop/Jazz"), &AACInfoTag::genres,
       QStringLiteral("Jazz/Pop")},
      {number("tmpo", "\0\170", 2), &AACInfoTag::bpm, QStringLiteral("120")},
      {number("tmpo", "\1", 1), &AACInfoTag::bpm, QStringLiteral("256")},
      {number("tmpo", "\0\0", 2), &AACInfoTag::bpm, QString()},
  };
  for (const Case &one : cases) {
    const auto tag = tagWith(one.items);
    ASSERT_TRUE(tag) << one.items.toHex().constData();
    EXPECT_EQ(((*tag).*one.value)(), one.expected) << one.items.toHex().constData();
  }
  EXPECT_TRUE(tagWith(number("cpil", "\1", 1))->isPartOfCompilation());
  EXPECT_FALSE(tagWith(number("cpil", "\0", 1))->isPartOfCompilation());
  const auto pictures =
      tagWith(atom("covr", {atom("data", be(13) + be(0) + "one"), atom("data", be(13) + be(0)),
                            atom("data", be(14) + be(0) + "two")}))
          ->images();
  ASSERT_EQ(pictures.size(), 2U);
  EXPECT_EQ(pictures[1]->imageData(), QByteArray("two"));
}

TEST_F(MP4Tag, FactsComeFromTheMovieAndElseFromTheAudiosSize) {
  struct Case {
    const char *what;
    QByteArray description, header;
    float duration;
    int bitrate, samplerate;
  };
  const Case cases[] = {
      {"plain", sampleTable("mp4a", 44100, 128000), movieHeader(1000, 60000), 60, 128, 44100},
      {"ceiling", sampleTable("mp4a", 44100, 499000), movieHeader(1000, 60000), 60, 320, 44100},
      {"protected: estimated", sampleTable("drms", 48000, 96000), movieHeader(600, 1200), 2, 20, 48000},
      {"unknown rate: estimated", sampleTable("mp4a", 0, 0), movieHeader(10, 10), 1, 40, -1},
      {"no scale", sampleTable("mp4a", 44100, 0), movieHeader(0, 60000), -1, -1, 44100},
      {"scale too large", sampleTable("mp4a", 44100, 0), movieHeader(100000, 60000), -1, -1, 44100},
  };
  for (const Case &one : cases) {
    const auto tag =
        tagOf(atom("moov", {one.header, track(one.description, chunkOffsets({}))}) + atom("mdat", kAudio));
    ASSERT_TRUE(tag) << one.what;
    EXPECT_EQ(tag->duration(), one.duration) << one.what;
    EXPECT_EQ(tag->bitrate(), one.bitrate) << one.what;
    EXPECT_EQ(tag->samplerate(), one.samplerate) << one.what;
  }
  const auto snapped = tagOf(atom("moov", {movieHeader(1, 1)}) + atom("mdat", QByteArray(124 * 131, 'x')));
  EXPECT_EQ(snapped->bitrate(), 128);
}

TEST_F(MP4Tag, SizesThatLieMakeNoTagAndNoCrash) {
  QByteArray deep = atom("free", QByteArray());
  for (int level = 0; level < 70; ++level) deep = atom("moov", deep);
  const QByteArray whole = MovieFile().bytes();
  const QByteArray refused[] = {be(5) + "moov", atom("moov", be(100) + "trak"), deep,
                                be(1) + "mdat" + be(0) + be(7), be(1) + "mdat"};
  for (const QByteArray &bytes : refused) EXPECT_FALSE(tagOf(bytes)) << bytes.toHex().constData();
  EXPECT_TRUE(tagOf(be(0) + "mdat" + "to the end")) << "size 0 reaches to the end";
  EXPECT_TRUE(tagOf(atom("moov", be(0) + "mvhd"))) << "size 0 inside a container";
  for (qsizetype length = 0; length < whole.size() - kAudio.size(); ++length) tagOf(whole.first(length));
}

TEST_F(MP4Tag, AChangeThatFreeSpacePaysForWritesTheFrontAlone) {
  MovieFile file;
  file.behindList = free(500);
  const QByteArray before = file.bytes();
  const QByteArray after = rewritten(before, kLongerTitle);
  EXPECT_EQ(after.size(), before.size());
  EXPECT_EQ(audioOf(after), kAudio);
  EXPECT_TRUE(after.contains(be(500 - 8 - 25 + 8) + "free"))
      << "the title's 8 bytes, and a new \"cpil\" of 25";
  EXPECT_EQ(tagOf(after)->title(), QStringLiteral("Title and ten"));
}

TEST_F(MP4Tag, AudioThatMovesIsFoundAgain) {
  MovieFile tight, behind, first;
  behind.behindMovie = free(500);
  first.audioFirst = true;
  const struct {
    const char *what;
    const MovieFile &file;
    qsizetype growth;
  } cases[] = {{"nothing free", tight, 33}, {"free behind the movie", behind, 0}, {"audio first", first, 33}};
  for (const auto &one : cases) {
    const QByteArray before = one.file.bytes();
    const QByteArray after = rewritten(before, kLongerTitle);
    EXPECT_EQ(after.size() - before.size(), one.growth) << one.what;
    EXPECT_EQ(audioOf(after), kAudio) << one.what;
    EXPECT_EQ(tagOf(after)->title(), QStringLiteral("Title and ten")) << one.what;
  }
}

TEST_F(MP4Tag, AWriteThatWouldSpoilTheAudioLeavesTheFileAlone) {
  const QByteArray whole = MovieFile().bytes();
  const QByteArray second = atom("mdat", QByteArray("more"));
  const QByteArray wide = atom("co64", be(0) + be(0));
  const QByteArray table = track(sampleTable("mp4a", 44100, 128000), chunkOffsets({0}) + wide);
  const struct {
    const char *what;
    QByteArray bytes;
    QString error;
  } cases[] = {
      {"a second mdat", whole + second, QStringLiteral("cannot update chunk offsets")},
      {"a co64", atom("moov", {movieHeader(1, 1), table, userData({})}) + atom("mdat", kAudio),
       QStringLiteral("cannot update chunk offsets")},
      {"another track's stco",
       atom("moov",
            {movieHeader(1, 1), track({}, chunkOffsets({})), track({}, chunkOffsets({})), userData({})}) +
           atom("mdat", kAudio),
       QStringLiteral("cannot update chunk offsets")},
      {"no mdhd", atom("moov", {movieHeader(1, 1), userData({})}) + atom("mdat", kAudio),
       QStringLiteral("cannot set modification date")},
      {"no ilst", atom("moov", {movieHeader(1, 1)}) + atom("mdat", kAudio), QString()},
  };
  for (const auto &one : cases) {
    EXPECT_EQ(rewritten(one.bytes, kLongerTitle, false), one.bytes) << one.what;
    EXPECT_EQ(error, one.error) << one.what;
  }
}

TEST_F(MP4Tag, ChunksInASecondBoxThatStaysAreNotMovedWithTheFirst) {
  for (const bool usesSecond : {false, true}) {
    const auto movie = [usesSecond](quint32 first, quint32 second) {
      const QByteArray table = usesSecond ? chunkOffsets({first, second}) : chunkOffsets({first});
      const QByteArray description = sampleTable("mp4a", 44100, 128000);
      return atom("moov", {movieHeader(1, 1), track(description, table), userData(text("\251nam", "Title"))});
    };
    const quint32 first = quint32(fileType().size() + movie(0, 0).size()) + 8;
    const quint32 second = first + quint32(kAudio.size()) + 508 + 8;
    const QByteArray before = fileType() + movie(first, second) + atom("mdat", kAudio) + free(500) +
                              atom("mdat", QByteArray("second"));
    const QByteArray after = rewritten(before, kLongerTitle, !usesSecond);
    EXPECT_EQ(audioOf(after), kAudio);
    EXPECT_EQ(after == before, usesSecond);
  }
}

TEST_F(MP4Tag, AudioBetweenTwoFreeSpacesMayMoveAlthoughTheTagKeepsItsSize) {
  MovieFile file;
  file.items = text("\251nam", "Title") + text("\251lyr", "x") + item("cpil", QByteArray("\0", 1), 21);
  file.behindMovie = free(20);
  const QByteArray after = rewritten(file.bytes() + free(500), [](AACInfoTag &tag) {
    tag.setTitle(QStringLiteral("Title and twenty-five more ..."));
    tag.setLyrics({});
  });
  EXPECT_EQ(audioOf(after), kAudio);
  EXPECT_EQ(tagOf(after)->title().size(), 30);
}

TEST_F(MP4Tag, AtomsThatOverlapAreNotWrittenTwice) {
  MovieFile file;
  file.behindMovie = atom("moov", be(400) + "xxxx");
  const QByteArray bytes = file.bytes();
  EXPECT_EQ(rewritten(bytes, kLongerTitle, false), bytes);
  EXPECT_EQ(error, QStringLiteral("can't modify (an error occurred): bad size atom"));
}

TEST_F(MP4Tag, WhatIsWrittenIsReadAgain) {
  MovieFile file;
  file.items = text("\251nam", "Old") + item("gnre", QByteArray("\0\021", 2), 0) + text("\251cmt", "kept") +
               text("\251day", "2004-05-01T07:00:00Z") + item("tmpo", QByteArray("\0\170", 2), 21);
  file.behindList = free(100);
  const QByteArray after = rewritten(file.bytes(), [](AACInfoTag &tag) {
    tag.setTitle({});
    tag.setArtist(QStringLiteral("Ärtist"));
    tag.setTrack(QStringLiteral("5/"));
    tag.setBPM(QStringLiteral("0"));
    tag.setLyrics(QStringLiteral("la"));
    tag.setIsPartOfCompilation(true);
    tag.addImage(ID3Image::imageWithDataMimeType(QByteArray("\x89PNG one"), {}));
    tag.addImage(ID3Image::imageWithDataMimeType(QByteArray(), {}));
    tag.addImage(ID3Image::imageWithDataMimeType(QByteArray(300, 'j'), {}));
  });
  const auto tag = tagOf(after);
  ASSERT_TRUE(tag);
  EXPECT_TRUE(tag->title().isNull());
  EXPECT_EQ(tag->artist(), QStringLiteral("Ärtist"));
  EXPECT_EQ(tag->track(), QStringLiteral("5"));
  EXPECT_EQ(tag->genres(), QStringLiteral("(16)"));
  EXPECT_FALSE(after.contains("gnre"));
  EXPECT_TRUE(tag->bpm().isNull());
  EXPECT_TRUE(after.contains("2004-05-01T07:00:00Z"));
  EXPECT_TRUE(after.contains("kept"));
  EXPECT_TRUE(tag->isPartOfCompilation());
  ASSERT_EQ(tag->images().size(), 2U);
  EXPECT_EQ(tag->images()[1]->imageData(), QByteArray(300, 'j'));
  EXPECT_EQ(audioOf(after), kAudio);
  const QByteArray bare = rewritten(after, [](AACInfoTag &again) { again.removeAllImages(); });
  EXPECT_FALSE(bare.contains("covr"));
  EXPECT_EQ(audioOf(bare), kAudio);
}

class AtomTree : public MP4Tag {
 protected:
  AtomPtr treeOf(const QByteArray &bytes) {
    return Atom::atomContainerFromFile(std::make_shared<FileReader>(write(bytes)));
  }
};

TEST_F(AtomTree, PathsNameAtomsByNameAndNumber) {
  const AtomPtr root =
      treeOf(atom("moov", {atom("trak", QByteArray()), atom("trak", {free(3)})}) + atom("mdat", "x"));
  EXPECT_EQ(root->childAtAtomPathCreate(QStringLiteral("FILE:moov:trak"))->size(), 0U);
  EXPECT_EQ(
      root->childAtAtomPathCreateIndexed(QStringLiteral("FILE:moov:trak"), false, QStringLiteral("1:1:2"))
          ->size(),
      11U);
  EXPECT_TRUE(root->childAtAtomPathCreate(QStringLiteral("FILE:moov:udta:meta"), true));
  AtomPtr meta = Atom::atomWithName(Atom::kMeta);
  meta->becomeContainer();
  EXPECT_EQ(meta->flattenedData(), be(12) + "meta" + be(0));
}

TEST_F(AtomTree, FreeSpacePaysForGrowthButIsNeverUsedUp) {
  for (const bool fits : {true, false}) {
    const AtomPtr root = treeOf(atom("moov", {atom("mvhd", QByteArray()), free(100)}) + free(1000));
    Atom::setAutoSizing(true);
    root->childAtAtomPathCreate(QStringLiteral("FILE:moov:mvhd"))->setData(QByteArray(fits ? 99 : 100, 'x'));
    Atom::setAutoSizing(false);
    EXPECT_EQ(root->childAtAtomPathCreate(QStringLiteral("FILE:moov:free"))->size(), fits ? 1U : 100U);
    EXPECT_EQ(root->childAtAtomPathCreate(QStringLiteral("FILE:free"))->size(), fits ? 1000U : 900U);
  }
}

}  // namespace
