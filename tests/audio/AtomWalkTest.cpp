#include "audio/mp4/AtomWalk.h"

#include <QFile>

#include "audio/TagError.h"
#include "audio/mp4/AACInfoTag.h"
#include "audio/mp4/Atom.h"
#include "tests/audio/MP4Builder.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

using namespace mp4;
using atomwalk::kNotFoundOffset;
using atomwalk::Source;

class AtomWalk : public TestPlatform {
 protected:
  std::shared_ptr<FileReader> open(const QByteArray &bytes) const {
    return std::make_shared<FileReader>(writeFile(u"music/a.m4a"_qs, bytes));
  }
  /// The size by a walk of bytes and of a file; -1 for one that raises.
  static qint64 sizeOf(Source source, quint64 offset) {
    try {
      return qint64(atomwalk::sizeOfAtomInAtOffsetName(source, offset, nullptr));
    } catch (const TagError &) {
      return -1;
    }
  }
};

TEST_F(AtomWalk, SizesAreReadByTheirFourForms) {
  const auto wide = [](quint32 high, quint32 low) { return be(1) + "mdat" + be(high) + be(low); };
  const struct {
    const char *what;
    QByteArray bytes;
    qint64 inMemory, inFile;
  } cases[] = {{"plain", atom("mdat", "abcd"), 12, 12},
               {"to the end", be(0) + "mdat" + "abcdef", 14, 14},
               {"wide", wide(1, 2) + "x", (1LL << 32) + 2, (1LL << 32) + 2},
               {"wide in the last 16 bytes", wide(0, 16), 16, -1},
               {"wide below a header", wide(0, 7) + "x", -1, -1},
               {"wide and cut", (be(1) + "mdat").left(8), -1, -1},
               {"below a header", be(7) + "mdat" + "x", -1, -1},
               {"a header cut short", QByteArray("\0\0\0", 3), 3, -1}};
  for (const auto &one : cases) {
    EXPECT_EQ(sizeOf(Source(QByteArrayView(one.bytes)), 0), one.inMemory) << one.what;
    EXPECT_EQ(sizeOf(Source(*open(one.bytes)), 0), one.inFile) << one.what;
  }
  EXPECT_TRUE(logContains(u"invalid size 7 for atom 'mdat' in file"_qs));
  EXPECT_EQ(sizeOf(Source(*open("12345678")), ~quint64(0) - 3), -1) << "an offset near 2^64";
}

TEST_F(AtomWalk, PathsLeadIntoAtomsByNameAndNumber) {
  const QByteArray file = free(4) + atom("moov", {atom("trak", {free(1)}), atom("trak", {atom("tkhd", "xy")}),
                                                  text("\251nam", "T")});
  const struct {
    QString path, indexes;
    quint64 offset;
  } cases[] = {{u"moov"_qs, u"1"_qs, 12},
               {u"moov:trak"_qs, u"1:2"_qs, 37},
               {u"moov:trak:tkhd"_qs, u"1:2:1"_qs, 45},
               {u"moov:©nam:data"_qs, u"1:1:1"_qs, 63},
               {u"moov:trak"_qs, u"1:3"_qs, kNotFoundOffset},
               {u"moov:trak"_qs, u"1"_qs, kNotFoundOffset},
               {u"moo"_qs, u"1"_qs, kNotFoundOffset}};
  for (const auto &one : cases) {
    EXPECT_EQ(offsetToAtomInAtNamePathIndexed(Source(QByteArrayView(file)), one.path, one.indexes),
              one.offset);
    EXPECT_EQ(offsetToAtomInAtNamePathIndexed(Source(*open(file)), one.path, one.indexes), one.offset);
  }
  EXPECT_EQ(atomwalk::atomDataInAtNamePath(QByteArrayView(file), u"moov:trak:tkhd"_qs), QByteArray());
  EXPECT_TRUE(atomwalk::atomDataInAtNamePath(QByteArrayView(file), u"none"_qs).isNull());
  EXPECT_EQ(atomwalk::nameText(0xA96E616D), u"©nam"_qs);
  const QByteArray eight = free(0);
  EXPECT_EQ(offsetToAtomInAtNamePathIndexed(Source(QByteArrayView(eight)), u"free"_qs, u"1"_qs),
            kNotFoundOffset);
}

TEST_F(AtomWalk, ALeafIsCutAtTheFilesEndAndAContainerIsRefused) {
  const AtomPtr root = Atom::atomContainerFromFile(open(atom("moov", be(900) + "mvhd" + "abc") + "12345678"));
  EXPECT_EQ(root->childAtAtomPathCreate(u"FILE:moov:mvhd"_qs)->data(), QByteArray("abc12345678"));
  EXPECT_TRUE(logContains(u"will trunc setFile:withRange:"_qs));
  EXPECT_THROW(Atom::atomContainerFromFile(open(atom("moov", be(900) + "trak") + "12345678")), TagError);
  EXPECT_TRUE(Atom::atomContainerFromFile(open({}))->contents().empty());
  const AtomPtr meta = Atom::atomContainerFromFile(open(atom("meta", QByteArray(2, 'x'))));
  EXPECT_TRUE(meta->contents().front()->isContainer());
}

TEST_F(AtomWalk, RowsOfCountlessAtomsCostLittleTime) {
  const QByteArray leaf = free(0), container = atom("trak", QByteArray());
  EXPECT_THROW(Atom::atomContainerFromFile(open(leaf.repeated(Atom::kMost + 1))), TagError);
  const QByteArray most = leaf.repeated(50000) + container.repeated(50000);
  const auto items = text("\251nam", "T") + atom("covr", QByteArray());
  const QByteArray bytes = most +
                           atom("moov", {movieHeader(1, 1), container.repeated(20000),
                                         track({}, chunkOffsets({1})), userData(items)}) +
                           atom("mdat", "x");
  const auto tag = AACInfoTag::tagWithMP4File(writeFile(u"music/b.m4a"_qs, bytes));
  ASSERT_TRUE(tag);
  tag->setTitle(u"Longer"_qs);
  QString error;
  EXPECT_FALSE(tag->modifySongFileAtPathError(folder(u"music/b.m4a"_qs), &error));
  EXPECT_EQ(readFile(folder(u"music/b.m4a"_qs)), bytes);
}

TEST_F(AtomWalk, WhatIsGoneFromTheFileIsNotWrittenBack) {
  const auto reader = open(atom("mdat", QByteArray(9000, 'x')));
  const AtomPtr root = Atom::atomContainerFromFile(reader);
  EXPECT_EQ(root->flattenedData().size(), 9016);
  ASSERT_TRUE(QFile::resize(folder(u"music/a.m4a"_qs), 100));
  EXPECT_THROW(root->flattenedData(), TagError);
  EXPECT_EQ(root->contents().front()->data().size(), 92);
  EXPECT_EQ(reader->read(200, 10), QByteArray());
}

TEST_F(AtomWalk, AnAtomRefusesWhatItCannotBe) {
  const AtomPtr root = Atom::atomContainerFromFile(open(atom("moov", free(1))));
  EXPECT_FALSE(root->removeFromContainer());
  EXPECT_FALSE(root->childAtAtomPathCreate(u"FILE:moov"_qs)->setSize(4));
  EXPECT_FALSE(Atom::atomWithName(Atom::kFree)->setStringValue(QString(QChar(0xD800))));
}

}  // namespace
