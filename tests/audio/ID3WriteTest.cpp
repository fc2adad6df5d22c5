#include <sys/resource.h>
#include <sys/stat.h>

#include <QFileInfo>
#include <csignal>

#include "audio/tags/ID3Writer.h"
#include "tests/audio/ID3Fixture.h"

using id3::audio;
using id3::block;
using id3::bytes;
using id3::frame22;
using id3::frame23;
using id3::frame24;
using id3::latin;
using id3::tag;

namespace {

const QByteArray kPng = "\x89PNG1";

class ID3Writing : public ID3Fixture {
 protected:
  /// Writes `written` into a file of these bytes; what the file holds afterwards.
  QByteArray writtenInto(MP3InfoTag &written, const QByteArray &before) {
    const QString path = file(before);
    error = QString();
    answer = written.modifySongFileAtPathError(path, &error);
    return readFile(path);
  }
  /// A file read, edited and written.
  QByteArray edited(const QByteArray &before, const std::function<void(MP3InfoTag &)> &edit = {}) {
    const TagPtr opened = MP3InfoTag::tagWithMPEGFile(file(before));
    if (edit) edit(*opened);
    return writtenInto(*opened, before);
  }

  QString error;
  bool answer = false;
};

void addPng(MP3InfoTag &each) {
  each.addImage(ID3Image::imageWithDataMimeType(kPng, {}));
}

}  // namespace

TEST_F(ID3Writing, EveryVersionGoesOutAsItCame) {
  const QByteArray wide = bytes("\xFE\xFF\x20\xAC");
  const struct {
    QByteArray before, after;
  } cases[] = {
      // A frame nobody knows keeps its bytes and flags; the year changes its name; every text has an end.
      {tag(3, frame23("PRIV", "ab", bytes("\x40\x80")) + frame23("TYER", latin("1999")) +
                  frame23("TIT2", bytes("\0A\0B")) + QByteArray(50, '\0')),
       tag(3, frame23("PRIV", "ab", bytes("\x40\x80")) + frame23("TYER", latin(bytes("1999\0"))) +
                  frame23("TIT2", bytes("\0A\0B\0")))},
      {tag(4, frame24("TDRC", latin("1999")) +
                  frame24("TIT2", bytes("\1") + wide + bytes("\0\0") + wide + bytes("\0\0"))),
       tag(4, frame24("TDRC", latin(bytes("1999\0"))) +
                  frame24("TIT2", bytes("\2") + wide + bytes("\0\0") + wide + bytes("\0\0")))},
      {tag(4, frame24("USLT", bytes("\0deu\0la")) + frame24("PRIV", QByteArray(200, 'x'))),
       tag(4, frame24("USLT", bytes("\0deu\0la")) + frame24("PRIV", QByteArray(200, 'x')))},
      {tag(3, frame23("USLT", bytes("\1xy\xE9\xFF\xFE"
                                    "d\0\0\0") +
                                  wide + bytes("\0\0"))),
       tag(3, frame23("USLT", bytes("\2eng\xFE\xFF\0d\0\0") + wide))},
      {tag(3, frame23("APIC", id3::picture("image/png", 3, "cover", kPng)) + frame23("TIT2", latin("A"))),
       tag(3, frame23("TIT2", bytes("\0A\0")) + frame23("APIC", id3::picture("image/png", 0, "", kPng)))},
      {tag(2, frame22("TT2", bytes("\1") + wide) + frame22("XYZ", "ab") +
                  frame22("ULT", bytes("\1eng\xFE\xFF\0d\0\0") + wide + bytes("\0\0"))),
       tag(2, frame22("TT2", bytes("\1") + wide) + frame22("XYZ", "ab") +
                  frame22("ULT", bytes("\1eng\xFE\xFF\0d\0\0") + wide))},
      {tag(2, frame22("PIC", bytes("\0JPG\3\0") + kPng) + frame22("TT2", bytes("\0A\0"))),
       tag(2, frame22("TT2", latin("A")) + frame22("PIC", bytes("\0JPG\0\0") + kPng))},
  };
  for (const auto &each : cases) {
    const QByteArray after = edited(each.before + audio());
    EXPECT_TRUE(answer);
    EXPECT_EQ(after.toHex(' ').toStdString(), (each.after + audio()).toHex(' ').toStdString());
  }
}

TEST_F(ID3Writing, WhatWasWrittenIsReadAsTheSameStore) {
  const auto edit = [](MP3InfoTag &each) {
    each.setTitle(u"Title \u20AC"_qs);
    each.setArtist(u"Café"_qs);
    each.setTrack(u"3/12"_qs);
    each.setYear(u"2004"_qs);
    each.setLyrics(u"la\nla"_qs);
    each.setIsPartOfCompilation(true);
    addPng(each);
  };
  for (const QByteArray &start :
       {QByteArray(), tag(2, frame22("XYZ", "ab")), tag(3, frame23("PRIV", QByteArray(150, 'x'))),
        tag(4, frame24("PRIV", QByteArray(150, 'x')))}) {
    const QByteArray once = edited(start + audio(), edit);
    ASSERT_TRUE(answer);
    EXPECT_TRUE(once.endsWith(audio()));
    const TagPtr back = MP3InfoTag::tagWithMPEGFile(file(once));
    EXPECT_EQ(back->id3v2Range().length, quint64(once.size() - audio().size()))
        << "the tag ends where the audio begins";
    EXPECT_EQ(back->title(), u"Title \u20AC"_qs);
    EXPECT_EQ(back->artist(), u"Café"_qs);
    EXPECT_EQ(back->track() + back->year() + back->lyrics(), u"3/122004la\nla"_qs);
    EXPECT_TRUE(back->isPartOfCompilation());
    ASSERT_EQ(back->numberOfImages(), 1);
    EXPECT_EQ(back->images()[0]->imageData(), kPng);
    const QByteArray twice = edited(once);
    EXPECT_EQ(twice, once) << "writing again changes nothing";
  }
}

TEST_F(ID3Writing, AnOldBlockStaysOldWhileNothingIsLost) {
  const QByteArray old = block({{3, "Title"}, {126, "\7"}});
  const auto versionWith = [&](const std::function<void(MP3InfoTag &)> &edit) {
    const TagPtr each = MP3InfoTag::tagWithMPEGFile(file(audio() + old));
    edit(*each);
    return each->writeVersion();
  };
  EXPECT_EQ(versionWith([](MP3InfoTag &each) { each.setArtist(QString(30, u'é')); }), u"1.1"_qs);
  EXPECT_EQ(versionWith([](MP3InfoTag &each) { each.setTitle(QString(31, u'a')); }), u"2.3.0"_qs);
  EXPECT_EQ(versionWith([](MP3InfoTag &each) { each.setAlbum(u"\u20AC"_qs); }), u"2.3.0"_qs);
  EXPECT_EQ(versionWith([](MP3InfoTag &each) { each.setYear(u"19999"_qs); }), u"2.3.0"_qs);
  EXPECT_EQ(versionWith([](MP3InfoTag &each) { each.setTrack(u"1/2"_qs); }), u"2.3.0"_qs);
  EXPECT_EQ(versionWith([](MP3InfoTag &each) { each.setGenres(u"Rock"_qs); }), u"2.3.0"_qs);
  EXPECT_EQ(versionWith(addPng), u"2.3.0"_qs);
  EXPECT_EQ(versionWith([](MP3InfoTag &each) { each.addObjectForFrameID(QByteArray("x"), "COMM"); }),
            u"2.3.0"_qs);

  EXPECT_EQ(edited(audio() + old, [](MP3InfoTag &each) { each.setTrack(u"12a"_qs); }),
            audio() + block({{3, "Title"}, {126, "\x0C"}}));
  EXPECT_EQ(edited(audio() + old, [](MP3InfoTag &each) { each.setTitle(QString(31, u'a')); }),
            tag(3, frame23("TIT2", bytes("\0") + QByteArray(31, 'a') + bytes("\0")) +
                       frame23("TRCK", latin(bytes("7\0")))) +
                audio() + block({{3, QByteArray(30, 'a')}, {126, "\7"}}));
  EXPECT_EQ(edited(tag(3, frame23("TALB", bytes("\0\x80\0"))) + audio() + old).right(128),
            block({{63, "\x80"}}));
}

TEST_F(ID3Writing, WhatAVersionCannotHoldIsLeftOutAndLogged) {
  MP3InfoTag odd;
  odd.addObjectForFrameID(QStringList{u"A"_qs}, "TIT2");
  odd.addObjectForFrameID(QByteArray("raw"), "XYZ");
  odd.addObjectForFrameID(TextBlock{u"\u4e2d\u6587\u4e2d"_qs, {}, u"la"_qs}, "USLT");
  odd.addImage(ID3Image::imageWithDataMimeType("none", {}));
  odd.addObjectForFrameID(odd.images()[0], "PRIV");
  EXPECT_EQ(ID3Writer(odd).dataForID3v22(), tag(2, frame22("XYZ", "raw")));
  EXPECT_TRUE(logContains(u"(null)/A dataForID3v22 cannot include (null)"_qs));
  EXPECT_EQ(ID3Writer(odd).dataForID3V23orV24(false),
            tag(3, frame23("TIT2", bytes("\0A\0")) + frame23("USLT", bytes("\0\0\0\0\0la")) + "PRIV" +
                       frame23("APIC", bytes("\0\0\0\0none"))));
  EXPECT_TRUE(logContains(u"id3v24 frame 'PRIV' of class ID3Image!"_qs));
}

TEST_F(ID3Writing, SizesThatDoNotFitTheirFieldMakeNoTag) {
  MP3InfoTag large;
  large.setReadVersion(u"2.2.0"_qs);
  large.addObjectForFrameID(QByteArray(1 << 24, 'x'), "XYZ");
  const QByteArray before = tag(2, frame22("TT2", latin("A"))) + audio();
  EXPECT_EQ(writtenInto(large, before), before);
  EXPECT_EQ(error, u"No ID3 tag could be made of this information."_qs);
  MP3InfoTag mixed;
  ID3Writer::setWriteSynchSafeSizesInV24(false);
  mixed.addObjectForFrameID(QByteArray(302, 'x'), "PRIV");
  EXPECT_EQ(ID3Writer(mixed).dataForID3V23orV24(true).mid(14, 4), bytes("\0\0\1\x2C"));
  ID3Writer::setWriteSynchSafeSizesInV24(true);
}

TEST_F(ID3Writing, AFileThatWouldBeSpoiledIsLeftAlone) {
  MP3InfoTag title;
  title.setTitle(u"T"_qs);
  const QByteArray box = bytes("\0\0\0\30ftypmp42") + audio();
  const QByteArray head = tag(3, frame23("TALB", latin("B")) + QByteArray(50, '\0'));
  for (const QByteArray &before : {box, head + box, head + audio(100), QByteArray("short")}) {
    EXPECT_EQ(writtenInto(title, before), before);
    EXPECT_FALSE(answer);
    EXPECT_TRUE(error.startsWith(u"The file cannot be opened for writing"_qs)) << error.toStdString();
  }
  EXPECT_TRUE(writtenInto(title, head + audio(101)).endsWith(audio(101)));
  EXPECT_TRUE(answer);
  EXPECT_FALSE(title.modifySongFileAtPathError(folder(u"music/none.mp3"_qs), nullptr));
}

TEST_F(ID3Writing, AFullDiskCostsNothing) {
  const QByteArray before = tag(3, frame23("TALB", latin("B"))) + audio(50000) + block({});
  MP3InfoTag title;
  title.setTitle(QString(2000, u'T'));
  struct rlimit old = {};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
  const auto oldHandler = ::signal(SIGXFSZ, SIG_IGN);
  const struct rlimit small = {rlim_t(before.size() + 1000), old.rlim_max};
  const QString path = file(before);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  EXPECT_FALSE(title.modifySongFileAtPathError(path, &error));
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &old), 0);
  ::signal(SIGXFSZ, oldHandler);
  EXPECT_EQ(readFile(path), before);
  EXPECT_EQ(error, u"can't modify (an error occurred): "_qs);
}

TEST_F(ID3Writing, TheFileStaysTheSameFileHoweverTheTagsLengthChanges) {
  const QByteArray song = audio(900 * 1024);
  QByteArray before = tag(3, frame23("TALB", latin("B"))) + song;
  const QString path = file(before);
  struct stat first = {};
  ASSERT_EQ(::stat(path.toUtf8().constData(), &first), 0);
  for (const int length : {10, 5000, 5001, 1, 400000, 400001, 20, 20}) {
    const TagPtr opened = MP3InfoTag::tagWithMPEGFile(path);
    opened->setTitle(QString(length, u'T'));
    ASSERT_TRUE(opened->modifySongFileAtPathError(path, &error)) << error.toStdString();
    const QByteArray now = readFile(path);
    EXPECT_TRUE(now.endsWith(song));
    EXPECT_EQ(now.size() - song.size(), 10 + 10 + length + 2 + 13) << length;
  }
  struct stat last = {};
  ASSERT_EQ(::stat(path.toUtf8().constData(), &last), 0);
  EXPECT_EQ(first.st_ino, last.st_ino);
}
