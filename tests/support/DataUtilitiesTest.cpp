#include <QDir>
#include <QFile>
#include <QImage>

#include "support/Compression.h"
#include "support/Copy.h"
#include "support/ImageIcon.h"
#include "support/Paths.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

class DataUtilities : public TestPlatform {
 protected:
  bool leftNoTemporaryFile() const {
    return QDir(folder(u"tmp"_qs)).isEmpty() && QDir(folder(u"home"_qs)).isEmpty(QDir::Files | QDir::Hidden);
  }
};

}  // namespace

TEST_F(DataUtilities, CompressionComesBackWhole) {
  QByteArray noise(200000, 0);
  for (qsizetype at = 0; at < noise.size(); ++at) noise[at] = char(at * at >> 7);
  for (const QByteArray &bytes : {QByteArray(), QByteArray("a"), QByteArray(100000, 'x'), noise}) {
    const QByteArray compressed = compressedData(bytes);
    EXPECT_TRUE(compressed.startsWith("\x1f\x8b")) << bytes.size();
    EXPECT_EQ(copyDecompressedData(compressed), bytes) << bytes.size();
  }
  EXPECT_TRUE(leftNoTemporaryFile());
}

TEST_F(DataUtilities, PlainAndCutDataPassThroughDecompression) {
  EXPECT_EQ(decompressedData(QByteArray("plain text")), "plain text");
  EXPECT_FALSE(copyDecompressedData({}).has_value());
  EXPECT_EQ(decompressedData({}), QByteArray());
  const QByteArray whole = compressedData(QByteArray(100000, 'x'));
  for (qsizetype length = 1; length < whole.size(); ++length) (void)decompressedData(whole.left(length));
  EXPECT_TRUE(leftNoTemporaryFile());
}

TEST_F(DataUtilities, CompressionFallsBackOnTheHomeFolderAndThenOnTheInput) {
  services.folders.temporary = folder(u"none"_qs);
  setPlatform(services);
  const QByteArray compressed = compressedData(QByteArray("bytes"));
  EXPECT_EQ(copyDecompressedData(compressed), QByteArray("bytes"));
  EXPECT_TRUE(leftNoTemporaryFile());
  services.folders.home = services.folders.temporary;
  setPlatform(services);
  EXPECT_EQ(compressedData(QByteArray("bytes")), "bytes");
  EXPECT_FALSE(copyDecompressedData(compressed).has_value());
  EXPECT_EQ(decompressedData(compressed), compressed);
}

TEST_F(DataUtilities, ADeepCopySharesNothingAndKeepsMutability) {
  const Array inner = Array::make();
  inner.append(1);
  const Dictionary source = Dictionary::make();
  source.set(Key(u"open"), inner);
  source.set(Key(u"shut"), [] {
    const Array shut = Array::make(false);
    return shut;
  }());
  const Dictionary copy = copyDeep(source);
  inner.append(2);
  source.remove(Key(u"shut"));
  EXPECT_EQ(copy.value(Key(u"open")).toArray().size(), 1);
  EXPECT_TRUE(copy.isMutable() && copy.value(Key(u"open")).toArray().isMutable());
  EXPECT_TRUE(copy.contains(Key(u"shut")));
  EXPECT_FALSE(copy.value(Key(u"shut")).toArray().isMutable());
  EXPECT_TRUE(copyDeep(Array()).isNull());
}

TEST_F(DataUtilities, ADeepCopyLeavesNothingsOutAndSaysSo) {
  const Array source = Array::make();
  for (const Value &value : {Value(1), Value(), Value(3)}) source.append(value);
  const Value copy = recursiveCopyAutoreleased(source);
  EXPECT_EQ(copy.toArray().size(), 2);
  EXPECT_EQ(copy.toArray().at(1).toInteger(), 3);
  EXPECT_TRUE(logContains(u"copyDeep nil object in array (1 of 3)"_qs));
}

TEST_F(DataUtilities, OnlyTheVeryObjectIsFound) {
  const Array list = Array::make();
  const Dictionary twin = Dictionary::make(), object = Dictionary::make();
  for (const Value &value : {Value(twin), Value(7), Value(object)}) list.append(value);
  EXPECT_EQ(indexOfObjectWithPointer(list, object), 2);
  EXPECT_EQ(indexOfObjectWithPointer(list, Dictionary::make()), kNotFound);
  EXPECT_EQ(indexOfObjectWithPointer(list, 7), kNotFound);
}

TEST_F(DataUtilities, FoldersAreMadeButNotThroughAFile) {
  const QString file = writeFile(u"file"_qs, "x");
  EXPECT_TRUE(createMissingDirectories(folder(u"a/b/c"_qs)) && QDir(folder(u"a/b/c"_qs)).exists());
  EXPECT_TRUE(createMissingDirectories(u"single"_qs));
  EXPECT_FALSE(createMissingDirectories(file + u"/below"_qs));
  EXPECT_FALSE(createMissingDirectories(file));
  EXPECT_EQ(bytesDescription(u"A\u00e9\U0001F3B5"_qs), u"65 233 55356 57269"_qs);
  EXPECT_EQ(bytesDescription({}), QString());
}

TEST_F(DataUtilities, AUniquePathIsFreeAndGivesUpAfterAThousand) {
  const QString first = BMUtility::uniqueWritablePathWithSuffix(u".scpt"_qs);
  EXPECT_TRUE(first.startsWith(folder(u"home/tmp"_qs)) && first.endsWith(u".scpt"));
  EXPECT_FALSE(QFile::exists(first));
  writeFile(first, "taken");
  EXPECT_NE(BMUtility::uniqueWritablePathWithSuffix(u".scpt"_qs), first);
  services.folders.home = folder(u"none"_qs);
  setPlatform(services);
  EXPECT_TRUE(BMUtility::uniqueWritablePathWithSuffix({}).isNull());
}

TEST_F(DataUtilities, AnIconFitsAndUnreadableBytesGetThePictureForThat) {
  QImage wide(300, 100, QImage::Format_RGB32);
  wide.fill(Qt::red);
  wide.save(folder(u"wide.png"_qs));
  const QImage icon = QImage::fromData(imageIconNoLargerThan(readFile(folder(u"wide.png"_qs)), 60, 60));
  EXPECT_EQ(icon.size(), QSize(60, 20));
  EXPECT_EQ(icon.pixelColor(30, 10), QColor(Qt::red));
  const QImage unreadable = QImage::fromData(imageIconNoLargerThan(QByteArray("no picture"), 32, 40));
  EXPECT_EQ(unreadable.size(), QSize(32, 32));
}
