#include "audio/ID3Image.h"

#include "audio/ByteView.h"
#include "audio/tags/TextDecoders.h"
#include "support/BMLog.h"
#include "values/Keys.h"

namespace {

constexpr QByteArrayView kImagePrefix("image/");
constexpr QByteArrayView kEnd("\0", 1);

/// The index of the first zero byte at or behind an index; the size if there is none.
qint64 endOfText(ByteView bytes, qint64 from) {
  const qint64 end = bytes.bytes().indexOf(kEnd, std::min(from, bytes.size()));
  return end < 0 ? bytes.size() : end;
}

/// True for a type or a description so long that its characters would take more memory than its file.
bool isTooLong(ByteView frame, qint64 from, qint64 end) {
  constexpr qint64 kLongest = 512 * 1024;
  return std::min(end, frame.size()) - from > kLongest;
}

QByteArray picture(ByteView frame, qint64 start) {
  return start < frame.size() ? frame.from(start).copy() : QByteArray();
}

QString imageType(const QString &name) {
  return QString::fromLatin1(kImagePrefix) + name;
}

}  // namespace

ID3ImagePtr ID3Image::imageWithDataMimeType(const QByteArray &data, const QString &mimeType) {
  auto image = std::make_shared<ID3Image>();
  image->pictureData = data;
  image->_mimeFormat = mimeType;
  return image;
}

ID3ImagePtr ID3Image::imageWithID3v22Frame(QByteArrayView data) {
  const ByteView frame(data);
  constexpr qint64 kDescription = 5;
  if (frame.size() <= kDescription + 1) {
    BMLog("initWithID3v22Frame insufficient data");
    return {};
  }
  auto image = std::make_shared<ID3Image>();
  image->textEncoding = frame.u8(0);
  image->_mimeFormat = imageType(QString::fromLatin1(frame.slice(1, 3).bytes()).toLower());
  image->pictureType = frame.u8(4);
  qint64 start = kDescription + 1;
  if (frame.u8(kDescription) != 0) {
    // The description's end counts as the picture's first byte: readers of such files know it so.
    start = endOfText(frame, start);
    if (isTooLong(frame, kDescription, start)) return {};
    image->_description = id3text::utf8(frame.slice(kDescription, start - kDescription).bytes());
  }
  image->pictureData = picture(frame, start);
  return image;
}

ID3ImagePtr ID3Image::imageWithID3v23Frame(QByteArrayView data) {
  const ByteView frame(data);
  if (frame.size() < 4) return {};
  auto image = std::make_shared<ID3Image>();
  image->textEncoding = frame.u8(0);
  qint64 type = 1;  // where the picture type is
  if (frame.u8(1) != 0) {
    type = endOfText(frame, 1);
    if (type == frame.size() || isTooLong(frame, 1, type)) return {};
    const QString text = id3text::utf8(frame.slice(1, type - 1).bytes());
    const bool isWhole = text.startsWith(QLatin1String(kImagePrefix));
    // A bare "PNG" leaves the position on its end, so that the type reads 0 and its byte opens the
    // description.
    if (isWhole) ++type;
    image->_mimeFormat = text.isNull() || isWhole ? text : imageType(text);
  }
  image->pictureType = frame.u8(type);
  qint64 start = type + 1;
  if (frame.u8(start) == 0) {
    ++start;
  } else {
    const bool isWide = image->textEncoding == 1 || image->textEncoding == 2;
    if (!isWide && isTooLong(frame, start, endOfText(frame, start))) return {};
    qint64 consumed = frame.size() - start;
    image->_description =
        id3text::id3v23StringInAtOffsetEncodingMaxLength(data, start, image->textEncoding, consumed);
    start += consumed;
  }
  image->pictureData = picture(frame, start);
  return image;
}

ID3ImagePtr ID3Image::copy() const {
  auto image = imageWithDataMimeType(pictureData, _mimeFormat);
  image->textEncoding = textEncoding;
  image->pictureType = pictureType;
  return image;
}

QString ID3Image::mimeFormat() {
  if (_mimeFormat.isNull()) _mimeFormat = autodetectMIMEFormat();
  return _mimeFormat;
}

QString ID3Image::autodetectMIMEFormat() const {
  const ByteView bytes{QByteArrayView(pictureData)};
  if (bytes.hasAt(1, "PNG")) return QStringLiteral("image/png");
  if (bytes.hasAt(0, "\xFF\xD8\xFF\xE0")) return QStringLiteral("image/jpeg");
  return {};
}

QString ID3Image::filenameSuffix() {
  const QString type = mimeFormat();
  if (type.isNull()) return {};
  QString suffix = type.mid(kImagePrefix.size());
  suffix.replace(u"jpeg"_qs, u"jpg"_qs);
  return suffix.isEmpty() ? u""_qs : suffix.toUpper();
}

Value ID3Image::encode() const {
  const Dictionary archive = Dictionary::make();
  if (!_mimeFormat.isNull()) archive.set(keys::mimeFormat, _mimeFormat);
  if (!_description.isNull()) archive.set(keys::pictureDescription, _description);
  archive.set(keys::textEncoding, qint64(textEncoding));
  archive.set(keys::pictureType, qint64(pictureType));
  if (!pictureData.isNull()) archive.set(keys::pictureData, pictureData);
  return archive;
}

ID3ImagePtr ID3Image::decode(const Value &archived) {
  const Dictionary &archive = archived.toDictionary();
  if (archive.isNull()) return {};
  const auto text = [&](Key key) {
    const Value &value = archive.value(key);
    return value.isText() ? value.toText() : QString();
  };
  auto image = imageWithDataMimeType(archive.value(keys::pictureData).toData(), text(keys::mimeFormat));
  image->_description = text(keys::pictureDescription);
  image->textEncoding = qint32(archive.value(keys::textEncoding).toInteger());
  image->pictureType = qint32(archive.value(keys::pictureType).toInteger());
  return image;
}
