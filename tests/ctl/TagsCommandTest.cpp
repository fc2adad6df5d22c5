#include <sys/stat.h>

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <csignal>

#include "tests/audio/ID3Builder.h"
#include "tests/audio/MP4Builder.h"
#include "tests/ctl/CommandFixture.h"

namespace {

/// A small MPEG file: a tag of frames, then what stands for audio.
QByteArray mpeg(int version, const QByteArray &frames) {
  return id3::tag(version, frames) + id3::audio();
}

QByteArray titleFrame(const QByteArray &title) {
  return id3::frame23("TIT2", id3::bytes("\0") + title);
}

/// A whole MP4 file, with room behind its list.
QByteArray mp4File(const QByteArray &items) {
  const auto movie = [&items](quint32 offset) {
    return mp4::atom("moov",
                     {mp4::movieHeader(1000, 60000),
                      mp4::track(mp4::sampleTable("mp4a", 44100, 128000), mp4::chunkOffsets({offset})),
                      mp4::userData(items, mp4::free(2000))});
  };
  const auto audio = quint32(mp4::fileType().size() + movie(0).size()) + 8;
  return mp4::fileType() + movie(audio) + mp4::atom("mdat", QByteArray(500, 'A'));
}

/// A stream that interrupts the program at its first byte.
class InterruptingBuffer : public std::stringbuf {
 protected:
  std::streamsize xsputn(const char *bytes, std::streamsize count) override {
    if (!std::exchange(hasRaised, true)) std::raise(SIGINT);
    return std::stringbuf::xsputn(bytes, count);
  }

 private:
  bool hasRaised = false;
};

class TagsCommandTest : public CommandFixture {
 protected:
  QString song(const QByteArray &bytes, const QString &name = QStringLiteral("music/song.mp3")) const {
    return writeFile(name, bytes);
  }
  int runOn(const char *words, const QStringList &files, const QString &more = {}) {
    return run(QString::fromLatin1(words) + u' ' + files.join(u' ') + u' ' + more);
  }
  QJsonObject json() const { return QJsonDocument::fromJson(QByteArray::fromStdString(out)).object(); }
  /// What is told of a file as one object, its path left out.
  std::string told(const QString &path) {
    EXPECT_EQ(runOn("tags", {path}, QStringLiteral("--json")), 0) << err;
    return QString::fromStdString(out).trimmed().replace(path, QStringLiteral("FILE")).toStdString();
  }
  QString copyPath() const { return folder(QStringLiteral("music/copy.mp3")); }
};

}  // namespace

TEST_F(TagsCommandTest, EveryFactOfAnMPEGFileIsInOneObject) {
  const QByteArray frames = titleFrame("Help!") + id3::frame23("TPE1", id3::bytes("\0") + "Beatles, The") +
                            id3::frame23("APIC", id3::picture("image/png", 3, "front", "\x89PNG")) +
                            id3::frame23("USLT", id3::bytes("\0eng\0words")) + id3::frame23("PRIV", "abc");
  const QString path = song(mpeg(3, frames) + id3::block({{3, "Help!"}}));
  EXPECT_EQ(
      told(path),
      R"({"path": "FILE", "sniffed": 0, "claims": {"mp3": true, "aac": false, "ogg": false, "aiff": false}, )"
      R"("isSongFile": true, "status": 0, "tag": {"type": 1, "readVersion": "2.3.0", "writeVersion": "2.3.0", )"
      R"("title": "Help!", "artist": "Beatles, The", "album": null, "track": null, "year": null, )"
      R"("genres": null, "lyrics": "words", "bpm": null, "compilation": false, "trackNumber": 0, )"
      R"("numberOfTracksOnAlbum": 0, "normalizedArtist": "The Beatles", "reversedArtist": "Beatles, The", )"
      R"("problem": false, "metadata": {"duration": null, "bitrate": null, "samplerate": null}, )"
      R"("duration": -1.0, "bitrate": -1, "samplerate": -1, "formattedDuration": null, "numberOfImages": 1, )"
      R"("numberOfArtworkBytes": 4, "images": [{"mime": "image/png", "type": 3, "size": 4, )"
      R"("sha1": "4effda12c2611e2e4feb6f0d342feb685ccd825b", "suffix": "PNG", "description": "front"}], )"
      R"("id3v1Range": [514, 128], "id3v2Range": [0, 114], "frames": [)"
      R"({"id": "TIT2", "kind": "strings", "sha1": "43da4b8e18609df2a55a6f11f09315dbfde88905"}, )"
      R"({"id": "TPE1", "kind": "strings", "sha1": "492aaef64947aee0b7c6c94b37cdc1351ffc969a"}, )"
      R"({"id": "[image]", "kind": "image", "sha1": "4effda12c2611e2e4feb6f0d342feb685ccd825b"}, )"
      R"({"id": "USLT", "kind": "text", "sha1": "73a6158d8adaf5da26e3b82fe7977cb2cb663b05"}, )"
      R"({"id": "PRIV", "kind": "raw", "sha1": "fd40b6335c6954332c0f9690cfffaed944c5393c"}]}})");
}

TEST_F(TagsCommandTest, EveryFactOfAnMP4FileIsInOneObject) {
  const QString path = song(mp4File(mp4::text("\251nam", "Title") + mp4::item("cpil", "\1", 21)),
                            QStringLiteral("music/song.m4a"));
  EXPECT_EQ(
      told(path),
      R"({"path": "FILE", "sniffed": 0, "claims": {"mp3": false, "aac": true, "ogg": false, "aiff": false}, )"
      R"("isSongFile": true, "status": 0, "tag": {"type": 2, "readVersion": "AAC", "writeVersion": "AAC", )"
      R"("title": "Title", "artist": null, "album": null, "track": null, "year": null, "genres": null, )"
      R"("lyrics": null, "bpm": null, "compilation": true, "trackNumber": 0, "numberOfTracksOnAlbum": 0, )"
      R"("normalizedArtist": null, "reversedArtist": null, "problem": false, )"
      R"("metadata": {"duration": 60.0, "bitrate": 128, "samplerate": 44100}, "duration": 60.0, )"
      R"("bitrate": 128, "samplerate": 44100, "formattedDuration": "1:00", "numberOfImages": 0, )"
      R"("numberOfArtworkBytes": 0, "images": [], "attributes": {"title": "Title", "compilation": true}}})");
}

TEST_F(TagsCommandTest, APersonReadsABlockForEachFileAndNoControlCharacters) {
  const QString path = song(
      mpeg(4, id3::frame24("TIT2", id3::bytes("\3Red\x1b[31m")) + id3::frame24("TRCK", id3::bytes("\0"
                                                                                                  "3/12"))));
  EXPECT_EQ(runOn("tags", {path}), 0) << err;
  EXPECT_EQ(out, path.toStdString() +
                     "\n  Kind          MPEG, tag of version 2.4.0, written as 2.4.0\n"
                     "  Title         Red\xEF\xBF\xBD[31m\n  Track         3/12\n  Frames        2\n\n");
}

TEST_F(TagsCommandTest, ABadFileIsOneLineAndTheRunGoesOn) {
  const QString good = song(mpeg(3, titleFrame("Help!")));
  const QString pipe = folder(QStringLiteral("pipe.mp3")), missing = folder(QStringLiteral("gone.mp3"));
  ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  const QString text = song("no audio", QStringLiteral("music/text.txt"));
  const QString cut =
      song(QByteArray("ID3\3\0\0\x7F\x7F\x7F\x7F", 10) + id3::audio(), QStringLiteral("cut.mp3"));
  const QString deep = song(QByteArray("\0\0\0\x07moov", 8).repeated(600), QStringLiteral("deep.m4a"));
  const std::pair<QString, const char *> cases[] = {{folder(QStringLiteral("music")), "it is a folder"},
                                                    {pipe, "it is no ordinary file"},
                                                    {QStringLiteral("/dev/zero"), "it is no ordinary file"},
                                                    {missing, "No such file or directory"},
                                                    {text, "neither MPEG nor MP4 audio"},
                                                    {cut, "no tag that can be read"},
                                                    {deep, "no tag that can be read"}};
  for (const auto &[bad, reason] : cases) {
    EXPECT_EQ(runOn("tags", {good, bad, good}, QStringLiteral("--json")), 1) << bad.toStdString();
    EXPECT_EQ(err, "tallyfenctl: Can't read \"" + bad.toStdString() + "\": " + reason + "\n");
    const bool isFile = QFileInfo(bad).isFile();
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), isFile ? 3 : 2) << bad.toStdString();
  }
}

TEST_F(TagsCommandTest, ALongListShowsItsProgressToAPersonOnly) {
  const QStringList many(40, song(mpeg(3, titleFrame("Help!"))));
  EXPECT_EQ(runOn("tags", many), 0);
  EXPECT_EQ(err, "");
  isTerminal = true;
  EXPECT_EQ(runOn("tags", many), 0);
  EXPECT_NE(err.find(" 50% 20 of 40"), std::string::npos) << err;
  EXPECT_EQ(runOn("tags", many.first(3)), 0);
  EXPECT_EQ(err, "");
}

TEST_F(TagsCommandTest, AnInterruptionEndsTheRunBehindTheFileInHand) {
  const QStringList words =
      QStringList{QStringLiteral("tags")} + QStringList(9, song(mpeg(3, titleFrame("T"))));
  std::istringstream in;
  std::ostringstream errors;
  InterruptingBuffer buffer;
  std::ostream output(&buffer);
  Terminal terminal{in, output, errors};
  EXPECT_EQ(CommandTable().run(words, terminal), 1);
  EXPECT_EQ(errors.str(), "tallyfenctl: cancelled\n");
  EXPECT_EQ(QByteArray::fromStdString(buffer.str()).count("Title"), 1);
}

TEST_F(TagsCommandTest, EditsHappenInTheOrderOfTheCommandLine) {
  const QString picture = writeFile(QStringLiteral("p.png"), "\x89PNG");
  const QString add = QStringLiteral("--image %1 ").arg(picture);
  struct Case {
    QString edits;
    const char *title;
    int pictures;
  };
  const Case cases[] = {{QStringLiteral("--set title=A --set title=B"), "B", 1},
                        {QStringLiteral("--set title=A=B"), "A=B", 1},
                        {QStringLiteral("--set=title="), nullptr, 1},
                        {add + QStringLiteral("--remove-images"), "Help!", 0},
                        {QStringLiteral("--remove-images ") + add + add, "Help!", 2},
                        {add + QStringLiteral("--remove-image 0 --remove-image 0"), "Help!", 0}};
  const QByteArray old = id3::frame23("APIC", id3::picture("image/jpeg", 3, "", "old"));
  for (const Case &one : cases) {
    const QString path = song(mpeg(3, titleFrame("Help!") + old), QStringLiteral("music/untitled.mp3"));
    EXPECT_EQ(runOn("tags set", {path}, QStringLiteral("--json ") + one.edits), 0) << err;
    const QJsonObject tag = json()[QStringLiteral("tag")].toObject();
    // A file without a title shows its name.
    EXPECT_EQ(tag[QStringLiteral("title")].toString(), QLatin1String(one.title ? one.title : "untitled"));
    EXPECT_EQ(tag[QStringLiteral("numberOfImages")].toInt(), one.pictures) << one.edits.toStdString();
    EXPECT_TRUE(readFile(path).endsWith(id3::audio()));
  }
}

TEST_F(TagsCommandTest, EveryFieldOfBothKindsIsSet) {
  const QString fields = QStringLiteral(
                             "--set title=T --set artist=A --set album=B --set track=3/4 --set year=1999 "
                             "--set genres=G --set lyrics=Words "
                             "--set bpm=120 --set compilation=yes --image %1 --mime image/x-odd --json")
                             .arg(writeFile(QStringLiteral("p"), "P"));
  for (const QString &path :
       {song(mpeg(4, {}).replace(6, 4, id3::synchSafe(20)).insert(10, QByteArray(20, '\0'))),
        song(mp4File(mp4::text("\251nam", "Old")), QStringLiteral("music/song.m4a"))}) {
    EXPECT_EQ(runOn("tags set", {path}, fields), 0) << err;
    EXPECT_TRUE(json()[QStringLiteral("ok")].toBool());
    EXPECT_TRUE(json()[QStringLiteral("error")].isNull());
    const QJsonObject tag = json()[QStringLiteral("tag")].toObject();
    QStringList texts;
    for (const char *name : {"title", "artist", "album", "track", "year", "genres", "lyrics", "bpm"})
      texts << tag[QLatin1String(name)].toString();
    EXPECT_EQ(texts.join(u' ').toStdString(), std::string("T A B 3/4 1999 G Words 120"));
    EXPECT_TRUE(tag[QStringLiteral("compilation")].toBool());
    EXPECT_EQ(tag[QStringLiteral("images")][0][QStringLiteral("size")].toInt(), 1);
  }
}

TEST_F(TagsCommandTest, ACopyIsChangedAndItsOriginalIsNot) {
  const QByteArray before = mpeg(3, titleFrame("Help!"));
  const QString path = song(before);
  QFile::setPermissions(path, QFile::ReadOwner);
  EXPECT_EQ(runOn("tags set", {path, copyPath()}, QStringLiteral("--set title=New")), 0) << err;
  EXPECT_NE(out.find("Title         New"), std::string::npos) << out;
  EXPECT_EQ(readFile(path), before);
  const QByteArray after = readFile(copyPath());
  EXPECT_TRUE(after.endsWith(id3::audio()) && after != before);
  EXPECT_EQ(runOn("tags set", {path, copyPath()}, QStringLiteral("--set title=Other")), 1);
  EXPECT_NE(err.find("there is something already"), std::string::npos) << err;
  EXPECT_EQ(readFile(copyPath()), after);
}

TEST_F(TagsCommandTest, AChangeThatFailsSaysWhyAndLeavesNoCopy) {
  const QString good = song(mpeg(3, titleFrame("Help!")));
  const QString list = QStringLiteral("music/nolist.m4a");
  const QByteArray bare = mp4::fileType() + mp4::atom("moov", {mp4::movieHeader(1000, 1)}) + mp4::free(400);
  struct Case {
    QString file, edits;
    const char *reason;
  };
  const Case cases[] = {
      {good, QStringLiteral("--remove-image 0"), "there is no picture 0"},
      {good, QStringLiteral("--image /dev/null"), "Can't read \"/dev/null\": it is no ordinary file"},
      {folder(QStringLiteral("gone.mp3")), {}, "No such file or directory"},
      {song("ID3", QStringLiteral("small.mp3")), {}, "it is too small to be a song"},
      {song(QByteArray(400, 'x'), QStringLiteral("x.txt")), {}, "it has no tag that can be read"},
      {song(bare, list), QStringLiteral("--set title=T"), "this file's tag cannot be written"}};
  for (const Case &one : cases) {
    const QByteArray before = readFile(one.file);
    EXPECT_EQ(runOn("tags set", {one.file, copyPath()}, one.edits + QStringLiteral(" --json")), 1);
    EXPECT_EQ(err, "tallyfenctl: \"" + one.file.toStdString() + "\" was not changed: " + one.reason + "\n");
    EXPECT_FALSE(json()[QStringLiteral("ok")].toBool(true)) << out;
    EXPECT_FALSE(QFileInfo::exists(copyPath())) << one.reason;
    EXPECT_EQ(readFile(one.file), before);
  }
}

TEST_F(TagsCommandTest, WrongUseChangesNothing) {
  const QByteArray before = mpeg(3, titleFrame("Help!"));
  const QString path = song(before);
  for (const char *words :
       {"--set title", "--set name=x", "--set compilation=maybe", "--mime image/png", "--remove-image one",
        "--remove-image -1", "--image p --mime a --mime b", "out.mp3 more.mp3", "--set"}) {
    EXPECT_EQ(runOn("tags set", {path}, QString::fromLatin1(words)), 2) << words;
    EXPECT_NE(err.find("usage: tallyfenctl tags set FILE [OUT]"), std::string::npos) << err;
  }
  for (const char *command : {"tags", "tags set", "tags strip", "tags tree"})
    EXPECT_EQ(runOn(command, {}), 2);
  EXPECT_EQ(readFile(path), before);
}

TEST_F(TagsCommandTest, OnlyAVersion24TagIsCutOff) {
  const QString path = song(mpeg(4, id3::frame24("TIT2", id3::bytes("\0T"))));
  EXPECT_EQ(runOn("tags strip", {path, copyPath()}), 0) << err;
  EXPECT_EQ(out, "Cut off: 22 bytes\n");
  EXPECT_EQ(readFile(copyPath()), id3::audio());
  EXPECT_EQ(runOn("tags strip", {path}), 0) << err;
  EXPECT_EQ(readFile(path), id3::audio());
  for (const QByteArray &bytes :
       {mpeg(3, titleFrame("Help!")), id3::audio(), QByteArray("ID3\4\0\0\0\0\1\0", 10)}) {
    const QString other = song(bytes, QStringLiteral("other.mp3")), out2 = folder(QStringLiteral("out2.mp3"));
    EXPECT_EQ(runOn("tags strip", {other, out2}), 1);
    EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
    EXPECT_EQ(readFile(other), bytes);
    EXPECT_FALSE(QFileInfo::exists(out2));
  }
}

TEST_F(TagsCommandTest, TheTreeShowsPlacesAndSizes) {
  const QByteArray items = mp4::text("\251nam", "Title");
  const QString path = song(mp4::fileType() + mp4::atom("moov", {mp4::userData(items)}) + mp4::free(8),
                            QStringLiteral("music/song.m4a"));
  EXPECT_EQ(runOn("tags tree", {path}), 0) << err;
  EXPECT_EQ(
      out,
      "    offset      bytes  atom\n         0         20  ftyp\n        20         98  moov\n"
      "        28         90    udta\n        36         82      meta\n        48         33        hdlr\n"
      "        81         37        ilst\n        89         29          \xC2\xA9nam\n"
      "        97         21            data  \"Title\"\n       118         16  free\n");
  const QString other = song(mpeg(3, titleFrame("Help!") + id3::frame23("PRIV", "abc")));
  EXPECT_EQ(runOn("tags tree", {other}), 0) << err;
  EXPECT_EQ(out,
            "Version: 2.3.0\nTag at the front: 39 bytes at 0\n  TIT2    strings Help!\n"
            "  PRIV    raw     5 bytes\n");
  EXPECT_EQ(runOn("tags tree", {song(id3::bytes("\0\0\0\3moov"), QStringLiteral("bad.m4a"))}), 1);
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
}
