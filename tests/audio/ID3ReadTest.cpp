#include "audio/TagError.h"
#include "audio/tags/ID3Reader.h"
#include "tests/audio/ID3Fixture.h"

using id3::audio;
using id3::block;
using id3::bytes;
using id3::frame22;
using id3::frame23;
using id3::frame24;
using id3::latin;
using id3::tag;

using ID3Reading = ID3Fixture;

TEST_F(ID3Reading, FramesOfEveryVersionComeInTheirOrder) {
  const QByteArray padding(20, '\0');
  const struct {
    QByteArray tag;
    QStringList store;
  } cases[] = {
      {tag(2, frame22("TT2", bytes("\0Hello\0")) + frame22("XYZ", "ab") + frame22("TT2", latin("Again"))),
       {u"TT2=Again"_qs, u"XYZ=61 62"_qs}},
      {tag(2, frame22("TYE", latin("1000")) + frame22("TRK", latin("0/9"))), {u"TYE=1000"_qs}},
      {tag(2, frame22("TYE", latin("999")) + frame22("TRK", latin("1/9"))), {u"TRK=1/9"_qs}},
      {tag(2, frame22("TAL", bytes("\0")) + frame22("TP1", bytes("\1\xFE\xFF\0A\0\0"))),
       {u"TAL="_qs, u"TP1=A"_qs}},
      {tag(2, frame22("TAL", latin("A")) + bytes("TP1\0\0\0") + frame22("TP1", latin("B"))), {u"TAL=A"_qs}},
      {tag(2, frame22("TCO", latin("Rock/Pop/Rock"))), {u"TCO=Rock/Pop"_qs}},
      {tag(2, frame22("TT2", latin("A")) + "TP1" + id3::number(0xFFFFFF, 3) + latin("Bcd")),
       {u"TT2=A"_qs, u"TP1=Bcd"_qs}},
      {tag(2, frame22("ULT", bytes("\0engabout\0la la"))), {u"ULT=eng:about:la la"_qs}},
      {tag(3, frame23("TIT2", bytes("\0A\0B\0")) + frame23("PRIV", "", bytes("\x40\x00")) +
                  frame23("TPE1", "Hello") + padding),
       {u"TIT2=A|B"_qs, u"PRIV=40 00"_qs, u"TPE1=Hello"_qs}},
      {tag(3, frame23(bytes("TT2\0"), latin("A")) + frame23("COM ", "x") + frame23("TYER", latin("1999"))),
       {u"TIT2=A"_qs, u"COMM=00 00 78"_qs, u"TDRC=1999"_qs}},
      {tag(4, frame24("TDRC", latin("0000")) + frame24("TDRC", latin("99")) + frame24("TDRC", latin("1000"))),
       {u"TDRC=1000"_qs}},
      {tag(3, frame23("TRCK", latin("0/3")) + frame23("TRCK", latin("3")) + frame23("TRCK", bytes("\0/4"))),
       {u"TRCK=3"_qs}},
      {tag(3, frame23("TCON", latin("A/A")) + frame23("TCON", bytes("\0A/A\0B"))),
       {u"TCON=A"_qs, u"TCON=A/A|B"_qs}},
      {tag(4, frame24("APIC", "abcd") + frame24("APIC", id3::picture("image/png", 3, "", "xy")) +
                  frame24("TBPM", bytes("\0"))),
       {u"[image]=image/png 3  78 79"_qs}},
      {tag(3, bytes("\0\0\0\0") + frame23("TIT2", latin("A"))), {}},
      {tag(3, bytes("\0\0\0\6\0\0\0\0\0\0") + frame23("TIT2", latin("A")), 0x40), {u"TIT2=A"_qs}},
      // A length indicator stands where the flags are looked for.
      {tag(4, bytes("PRIV\0\0\0\3\0\1\0\0\0\3") + "abc"), {u"PRIV=00 03 61 62 63"_qs}},
      {tag(3, frame23("USLT", bytes("\0eng\0la")) + frame23("USLT", bytes("\5eng\0la"))),
       {u"USLT=eng::la"_qs}},
  };
  for (const auto &each : cases)
    EXPECT_EQ(storeOf(each.tag), each.store) << each.tag.toHex(' ').toStdString();
}

TEST_F(ID3Reading, TheSizeThatLeadsToSomethingIsTaken) {
  const QByteArray body = bytes("\0") + QByteArray(299, 'a');
  const QByteArray next = latin("B");
  const QString text = QString(299, u'a');
  const QStringList both{u"TIT2="_qs + text, u"TALB=B"_qs};
  EXPECT_EQ(storeOf(tag(4, frame23("TIT2", body) + frame23("TALB", next))), both) << "2.4 with plain sizes";
  EXPECT_EQ(storeOf(tag(3, frame24("TIT2", body) + frame24("TALB", next))), both)
      << "2.3 with synch-safe sizes";
  EXPECT_EQ(storeOf(tag(3, frame23("TIT2", body) + QByteArray(3, '\0'))), both.first(1))
      << "the padding may be cut";

  // Both readings of 00 00 01 00 lead on: 256 plain, 128 synch-safe.
  QByteArray two = bytes("TIT2\0\0\1\0\0\0\0") + QByteArray(127, 'a') + frame23("TPE1", QByteArray(118, 'b'));
  two += frame23("TALB", next);
  EXPECT_EQ(read(tag(3, two))->artist(), QString());
  EXPECT_EQ(read(tag(4, two))->artist(), QString(118, u'b'));

  const TagPtr rest = read(tag(3, frame23("TALB", next) + bytes("TIT2\0\0\7\0\0\0\0") + QByteArray(30, 'a')));
  EXPECT_TRUE(rest->encounteredProblemDecoding());
  EXPECT_EQ(store(*rest), QStringList({u"TALB=B"_qs, u"TIT2="_qs + QString(30, u'a')}));
  EXPECT_TRUE(logContains(u"*** id3v23/4 'TIT2' invalid size ((null))"_qs));
}

TEST_F(ID3Reading, ALengthIndicatorShiftsTheNextFrameAndAnOverrunEndsTheTag) {
  const QByteArray flags = bytes("\0\1");
  const TagPtr shifted = read(tag(4, frame24("TIT2", bytes("\0\0\0\5"), flags).replace(7, 1, "\5") +
                                         latin("Abcd") + frame24("TALB", latin("B"))));
  EXPECT_EQ(store(*shifted), QStringList({u"TIT2=Abcd"_qs, u"TALB=B"_qs}));
  EXPECT_TRUE(logContains(u"*** id3v23 'TIT2' length indicator used OK ((null))"_qs));

  const TagPtr overrun = read(tag(4, frame24("TALB", latin("B")) + bytes("TIT2\0\0\0\x20\0\0\0Abcd")));
  EXPECT_EQ(store(*overrun), QStringList(u"TALB=B"_qs));
  EXPECT_TRUE(overrun->encounteredProblemDecoding());
  EXPECT_TRUE(logContains(u"*** id3v23 'TIT2' overrun ((null))"_qs));
}

TEST_F(ID3Reading, FilesWithoutAReadableTagHaveNone) {
  const QByteArray title = frame23("TIT2", latin("A"));
  EXPECT_FALSE(MP3InfoTag::tagWithMPEGFile(folder(u"music/none.mp3"_qs)));
  EXPECT_FALSE(MP3InfoTag::tagWithMPEGFile(folder(u"music"_qs)));
  EXPECT_FALSE(MP3InfoTag::tagWithMPEGFile(file(audio(127))));
  EXPECT_TRUE(logContains(u"MP3 only 127 bytes in "_qs + folder(u"music/song.mp3"_qs)));
  EXPECT_FALSE(read(tag(5, title)));
  EXPECT_FALSE(read(bytes("ID3\3\0\0\0\0\0\6") + title)) << "a size below 7";
  EXPECT_FALSE(logContains(u"*** "_qs));
  EXPECT_FALSE(read(bytes("ID3\3\0\0\0\0\x7F\x7F") + title)) << "longer than the file";
  EXPECT_TRUE(logContains(u"MP3 tag length wrong for file: "_qs));
  EXPECT_FALSE(read(tag(2, frame22("PIC", "abc"))));
  EXPECT_TRUE(logContains(u"initWithID3v22Frame insufficient data"_qs) &&
              logContains(u"ID3v22 PIC nil ((null)/(null))"_qs));
  EXPECT_FALSE(read(tag(3, frame23("APIC", latin("image/png")))));
  EXPECT_TRUE(logContains(u"*** ID3v23 APIC thePicture nil!"_qs));
  const TagPtr plain = read(bytes("ID3\3\0\0\0\0\x80\6"));
  ASSERT_TRUE(plain) << "no header: the file has an empty tag";
  EXPECT_TRUE(plain->readVersion().isNull());
}

TEST_F(ID3Reading, OddHeadersAreSurvivedAndLogged) {
  const QByteArray title = frame23("TIT2", latin("A"));
  const TagPtr wide = read(tag(3, bytes("") + title, 0x40 | 0x80));
  EXPECT_TRUE(wide->encounteredProblemDecoding());
  EXPECT_EQ(wide->title(), u"A"_qs) << "an extended header larger than the tag counts as none";
  for (const quint32 size : {49U, 50U}) {
    const TagPtr edge = read(tag(3, id3::number(size, 4) + title, 0x40));
    EXPECT_EQ(edge->encounteredProblemDecoding(), size == 50) << "24 bytes behind the tag's end";
  }
  EXPECT_TRUE(logContains(u"*** ID3V2.4 UNSYNCHRONIZED ***"_qs));
  EXPECT_TRUE(logContains(u"*** EXTENDER HEADER 1414091826 bytes ( >22, IGNORED ) ***"_qs));
}

TEST_F(ID3Reading, WhatIsMalformedOrUnknownIsLeftOutWhereThatIsWanted) {
  const QByteArray old = frame22("TT2", latin("A")), title = frame23("TIT2", latin("A"));
  const std::pair<QByteArray, QStringList> cases[] = {
      {tag(2, old + "TP1" + id3::number(0xFFFFFF, 3) + latin("Bcd")), {u"TT2=A"_qs}},
      {tag(2, frame22("PIC", "abc") + old), {u"TT2=A"_qs}},
      {tag(2, frame22("XYZ", "ab") + frame22("COM", "x")), {u"COM=78"_qs}},
      {tag(3, title + bytes("TALB\0\0\7\0\0\0\0") + QByteArray(30, 'a')), {u"TIT2=A"_qs}},
      {tag(3, frame23("APIC", bytes("\0image/png")) + title), {u"TIT2=A"_qs}},
      {tag(3, frame23("PRIV", "abc") + frame23("COMM", "x")), {u"COMM=00 00 78"_qs}}};
  AudioInfoTag::setShouldDiscardMalformedInfo(true);
  AudioInfoTag::setShouldDiscardUnrecognizedInfo(true);
  for (const auto &[bytesRead, expected] : cases)
    EXPECT_EQ(storeOf(bytesRead), expected) << bytesRead.toHex(' ').toStdString();
  AudioInfoTag::setShouldDiscardMalformedInfo(false);
  AudioInfoTag::setShouldDiscardUnrecognizedInfo(false);
}

TEST_F(ID3Reading, TheBlockOfVersion1IsReadOnlyAlone) {
  const QByteArray full =
      block({{3, "Title  "}, {33, "Caf\xC3\xA9"}, {63, "Caf\xE9"}, {93, "1001"}, {97, "Note"}, {126, "\7"}});
  const auto atEnd = [&](const QByteArray &front, const QByteArray &last) {
    return MP3InfoTag::tagWithMPEGFile(file(front + audio() + last));
  };
  const TagPtr old = atEnd({}, full);
  EXPECT_EQ(store(*old), QStringList({u"TIT2=Title"_qs, u"TPE1=Café"_qs, u"TALB=Café"_qs, u"TDRC=1001"_qs,
                                      u"COMM=00 00 00 65 6e 67 00 4e 6f 74 65"_qs, u"TRCK=7"_qs}));
  EXPECT_EQ(old->readVersion(), u"1.1"_qs);
  EXPECT_EQ(old->id3v1Range().start, 400u);
  const TagPtr older = atEnd({}, block({{93, "1000"}, {125, "ab"}}));
  EXPECT_EQ(store(*older), QStringList());
  EXPECT_EQ(older->readVersion(), u"1.0"_qs);
  const TagPtr both = atEnd(tag(3, frame23("TALB", latin("B"))), full);
  EXPECT_EQ(store(*both), QStringList(u"TALB=B"_qs));
  EXPECT_EQ(both->id3v1Range().length, 128u);
  EXPECT_EQ(both->id3v2Range().length, 22u);
  EXPECT_EQ(both->readVersion(), u"2.3.0"_qs);
}

TEST_F(ID3Reading, ATagCutAnywhereCostsAtMostItself) {
  const QByteArray frames23 =
      frame23("TIT2", bytes("\1\xFF\xFEH\0\0\0")) + frame23("USLT", bytes("\1eng\xFE\xFF\0\0\xFE\xFF\0A")) +
      frame23("APIC", id3::picture("image/png", 3, "d", QByteArray(200, 'p'))) + frame23("PRIV", "abc");
  const QByteArray frames22 = frame22("TT2", bytes("\1\xFF\xFEH\0")) + frame22("ULT", bytes("\0eng\0la")) +
                              frame22("PIC", bytes("\0PNG\3d\0pic")) + frame22("XYZ", "abc");
  const QByteArray frames24 = frame24("TIT2", bytes("\3H")) + frame24("USLT", bytes("\0eng\0la")) +
                              frame24("APIC", id3::picture("image/png", 3, "d", QByteArray(200, 'p'))) +
                              frame24("PRIV", "abc");
  const auto framesIn = [](const QByteArray &data) {
    MP3InfoTag cut;
    try {
      ID3Reader(cut).getAttributesFromID3v2(data);
    } catch (const TagError &) {
    }
    return cut.frames().size();
  };
  for (const QByteArray &whole : {tag(2, frames22), tag(3, frames23), tag(4, frames24)}) {
    size_t before = 0;
    for (qsizetype length = 0; length <= whole.size(); ++length) {
      const size_t frames = framesIn(whole.first(length));
      // A frame that was cut may be dropped where its next byte makes it no text and no picture.
      EXPECT_TRUE(frames + 1 >= before && frames <= before + 1) << length;
      before = frames;
    }
    EXPECT_EQ(before, 4u);
  }
  const QByteArray extended = tag(4, frames24, 0x40);
  for (qsizetype length = 0; length <= extended.size(); ++length) framesIn(extended.first(length));
  EXPECT_EQ(storeOf(tag(3, frames23)).size(), 4);
}

TEST_F(ID3Reading, EditsGoToTheIdsOfTheVersionThatWasRead) {
  const TagPtr old = read(tag(2, frame22("TT2", latin("A"))));
  const TagPtr young = read(tag(4, frame24("TIT2", bytes("\0A\0B"))));
  EXPECT_FALSE(old->tagHasBeenModified());
  for (MP3InfoTag *each : {old.get(), young.get()}) {
    each->setTitle(u"T"_qs);
    each->setAlbum(u""_qs);
    each->setYear(u"1999"_qs);
    each->setLyrics(u"la"_qs);
    each->setIsPartOfCompilation(true);
    EXPECT_TRUE(each->isPartOfCompilation() && each->tagHasBeenModified());
  }
  EXPECT_EQ(store(*old), QStringList({u"TT2=T"_qs, u"TYE=1999"_qs, u"ULT=eng::la"_qs, u"TCP=1"_qs}));
  EXPECT_EQ(store(*young), QStringList({u"TIT2=T"_qs, u"TDRC=1999"_qs, u"USLT=eng::la"_qs, u"TCMP=1"_qs}));
  young->setTitle({});
  young->setIsPartOfCompilation(false);
  EXPECT_EQ(store(*young), QStringList({u"TDRC=1999"_qs, u"USLT=eng::la"_qs}));
  EXPECT_TRUE(young->title().isNull() && !young->isPartOfCompilation());
  young->addObjectForFrameID(ID3ImagePtr(), "X");
  EXPECT_TRUE(logContains(u"addObject with nil param!"_qs));
}
