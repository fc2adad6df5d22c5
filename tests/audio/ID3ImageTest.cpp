#include "audio/ID3Image.h"
#include "tests/audio/ID3Builder.h"
#include "tests/fixtures/TestPlatform.h"

using id3::bytes;
using ID3Images = TestPlatform;

TEST_F(ID3Images, PictureFramesAreReadByTheirOwnRules) {
  const struct {
    bool isV22;
    QByteArray frame;
    QString mime;  // "none" for no image
    qint32 type;
    QString description;
    QByteArray data;
  } cases[] = {
      {true, bytes("\0PNG\3\0xyz"), u"image/png"_qs, 3, {}, "xyz"},
      {true, bytes("\0PNG\3\0"), u"none"_qs, 0, {}, {}},
      {true, bytes("\0JPG\3\0x"), u"image/jpg"_qs, 3, {}, "x"},
      {true, bytes("\0PNG\3cover\0xyz"), u"image/png"_qs, 3, u"cover"_qs, bytes("\0xyz")},
      {true, bytes("\0PNG\3cover"), u"image/png"_qs, 3, u"cover"_qs, {}},
      {false, bytes("\0image/jpeg\0\3\0xyz"), u"image/jpeg"_qs, 3, {}, "xyz"},
      {false, bytes("\0image/jpeg\0\3cover\0xyz"), u"image/jpeg"_qs, 3, u"cover"_qs, "xyz"},
      {false, bytes("\0PNG\0\3\0xyz"), u"image/PNG"_qs, 0, u"\u0003"_qs, "xyz"},
      {false, bytes("\0\0\3\0xyz"), {}, 0, u"\u0003"_qs, "xyz"},
      {false, bytes("\0\0\0\0xyz"), {}, 0, {}, bytes("\0xyz")},
      {false, bytes("\1image/png\0\3\xFF\xFE\0\0xyz"), u"image/png"_qs, 3, u""_qs, "xyz"},
      {false, bytes("\4image/png\0\3d\0xyz"), u"image/png"_qs, 3, {}, {}},
      {false, bytes("\0\xE9\0\0xyz"), {}, 0, {}, "xyz"},
      {false, bytes("\0image/png\0"), u"image/png"_qs, 0, {}, {}},
      {false, bytes("\0image/png"), u"none"_qs, 0, {}, {}},
      {false, bytes("\0a\0"), u"none"_qs, 0, {}, {}},
  };
  for (const auto &each : cases) {
    const ID3ImagePtr image =
        each.isV22 ? ID3Image::imageWithID3v22Frame(each.frame) : ID3Image::imageWithID3v23Frame(each.frame);
    ASSERT_EQ(!image, each.mime == u"none") << each.frame.toHex(' ').toStdString();
    if (!image) continue;
    EXPECT_EQ(image->mimeFormat(), each.mime) << each.frame.toHex(' ').toStdString();
    EXPECT_EQ(image->type(), each.type) << each.frame.toHex(' ').toStdString();
    EXPECT_EQ(image->description(), each.description) << each.frame.toHex(' ').toStdString();
    EXPECT_EQ(image->imageData(), each.data) << each.frame.toHex(' ').toStdString();
  }
}

TEST_F(ID3Images, ATypeThatNobodyToldIsFoundInTheBytes) {
  const auto suffix = [](const QByteArray &data, const QString &type) {
    return ID3Image::imageWithDataMimeType(data, type)->filenameSuffix();
  };
  EXPECT_EQ(suffix("\x89PNG\r\n", {}), u"PNG"_qs);
  EXPECT_EQ(suffix("\xFF\xD8\xFF\xE0xyz", {}), u"JPG"_qs);
  EXPECT_TRUE(suffix("\xFF\xD8\xFF\xE1xyz", {}).isNull());
  EXPECT_TRUE(suffix({}, {}).isNull());
  EXPECT_EQ(suffix({}, u"image/gif"_qs), u"GIF"_qs);
  EXPECT_EQ(suffix({}, u"png"_qs), u""_qs);
}

TEST_F(ID3Images, CopiesLeaveTheDescriptionBehindAndArchivesKeepIt) {
  const ID3ImagePtr image = ID3Image::imageWithID3v23Frame(bytes("\3image/png\0\3cover\0xyz"));
  const ID3ImagePtr copy = image->copy();
  EXPECT_TRUE(copy->description().isNull());
  EXPECT_EQ(copy->encoding(), 3);
  EXPECT_EQ(copy->type(), 3);
  const ID3ImagePtr restored = ID3Image::decode(image->encode());
  EXPECT_EQ(restored->description(), u"cover"_qs);
  EXPECT_EQ(restored->mimeFormat(), u"image/png"_qs);
  EXPECT_EQ(restored->imageData(), "xyz");
  EXPECT_EQ(restored->encoding() + restored->type(), 6);
  EXPECT_FALSE(ID3Image::decode(Value(1)));
}
