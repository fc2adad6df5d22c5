#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

#include "values/Value.h"

class ID3Image;
using ID3ImagePtr = std::shared_ptr<ID3Image>;

/// One embedded picture: its bytes, its MIME type, and what a frame told about it. An absent text is null.
/// One thread.
class ID3Image {
 public:
  /// A picture of these bytes; a null type is found out when it is asked for.
  static ID3ImagePtr imageWithDataMimeType(const QByteArray &data, const QString &mimeType);
  /// From the data of a "PIC" frame, without its header; null if there are too few bytes, or too many of its
  /// description.
  static ID3ImagePtr imageWithID3v22Frame(QByteArrayView frame);
  /// From the data of an "APIC" frame, without its header; null if it cannot be read.
  static ID3ImagePtr imageWithID3v23Frame(QByteArrayView frame);
  /// A new object with the same bytes, type and numbers; the description stays behind.
  ID3ImagePtr copy() const;

  /// The type told, else the one that the bytes show; null if neither is known.
  QString mimeFormat();
  /// "image/png" or "image/jpeg" by the first bytes; null for others.
  QString autodetectMIMEFormat() const;
  /// "JPG", "PNG" and the like; null without a type.
  QString filenameSuffix();
  const QByteArray &imageData() const { return pictureData; }
  const QString &description() const { return _description; }
  qint32 encoding() const { return textEncoding; }
  qint32 type() const { return pictureType; }
  void setPictureType(qint32 type) { pictureType = type; }
  void setTextEncoding(qint32 encoding) { textEncoding = encoding; }

  /// For an archive, and back; null for a value that is none.
  Value encode() const;
  static ID3ImagePtr decode(const Value &archived);

 private:
  qint32 textEncoding = 0;
  qint32 pictureType = 0;
  QString _mimeFormat;
  QString _description;
  QByteArray pictureData;
};
