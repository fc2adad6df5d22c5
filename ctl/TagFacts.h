#pragma once

#include <QString>

#include "audio/SongFile.h"
#include "audio/tags/MP3InfoTag.h"

class FileReader;
class JsonWriter;

/// What the tag commands tell of one file. Made by reading the file; one thread.
class TagFacts {
 public:
  /// Reads what there is to know of a file, if it can be read; one too small to be a song still has a tag.
  explicit TagFacts(const QString &file);

  /// False for what is no ordinary file that can be read: there is nothing to tell of it.
  bool isReadable() const { return whyNot.isNull(); }
  /// Why there is no tag to tell of; null if there is one.
  QString complaint() const;

  /// The whole as one object.
  void write(JsonWriter &json) const;
  /// The tag alone: an object, or null.
  void writeTag(JsonWriter &json) const;
  /// A block of lines for a person.
  QString text() const;

 private:
  QString mPath;
  QString whyNot;
  qint32 sniffed = SongFile::kUnknownData;
  SongFilePtr song;
  AudioInfoTagPtr own;
  AudioInfoTag *held = nullptr;
};

namespace tagFacts {

/// 1 MPEG, 2 MP4, 0 neither: how a file is read, by what its content shows and else by its name.
qint32 kindOf(const QString &path, qint32 sniffed);
/// Opens a path. Why it cannot be read as a file, in words; null if it can. Waits for nothing.
QString whyUnreadable(const QString &path, FileReader &file);
QString whyUnreadable(const QString &path);
/// SHA-1 of bytes, as hexadecimal digits.
QString digest(QByteArrayView bytes);
/// The same of what a frame holds: bytes as stored; each text as UTF-8 with a zero byte behind it; of lyrics
/// "lang=", "desc=" and "text=" with theirs, as far as there are; a picture's own bytes.
QString digest(const FrameValue &value);
/// "strings", "text", "image" or "raw".
QString kindName(const FrameValue &value);
/// A frame's content for a person, in one short line.
QString inWords(const FrameValue &value);
/// A picture for a person: type, size, number of the kind, description.
QString inWords(ID3Image &image);
/// The start of a text, fit for one line of a terminal.
QString shortened(const QString &text);

}  // namespace tagFacts
