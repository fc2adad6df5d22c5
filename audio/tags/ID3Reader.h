#pragma once

#include <map>

#include "audio/ByteView.h"
#include "audio/tags/MP3InfoTag.h"

/// Reads the tag of an MPEG audio file into an `MP3InfoTag`: id3.org's id3v2-00 (2.2), id3v2.3.0,
/// id3v2.4.0-structure and ID3v1, and what real files make of them. Every frame is kept, known or not. Throws
/// TagError for a tag that is none; what is odd but can be read sets the tag's problem flag. One use.
///
/// A tag of millions of frames would take thirty times its bytes in memory. A tag of which not all can be
/// kept counts as none, so that nobody writes back a part of it.
class ID3Reader {
 public:
  /// So many frames and texts a tag may have.
  static constexpr qint64 kMost = 1 << 15;

  explicit ID3Reader(MP3InfoTag &into) : tag(into) {}

  /// Finds the tags of a file and reads the one of version 2, else the block of version 1. Reads the tag in
  /// one piece and nothing of the audio.
  void readFile(const FileReader &file, const QString &path);
  /// Reads a whole version 2 tag, header included; nothing for no bytes.
  void getAttributesFromID3v2(QByteArrayView data);
  /// Reads a block of 128 bytes. Fills only what is not there yet.
  void getAttributesFromID3v1(QByteArrayView block);

 private:
  struct Frame {
    QByteArray id;
    qint64 start = 0;  // of the data, in the tag's bytes
    qint64 size = 0;
    qint64 end = 0;  // where the next frame is
  };

  void findID3v2(const QByteArray &head, qint64 fileSize, const QString &path);

  void getAttributesFromID3v22(ByteView data);
  void readFrame22(const QByteArray &id, ByteView frame);
  void readText22(const QByteArray &id, ByteView frame);

  void getAttributesFromID3v2xAssumeSynchSafeSizes(ByteView data, bool assumeSynchSafe);
  qint64 firstFrame(ByteView data);
  bool locateFrame(ByteView data, qint64 at, bool assumeSynchSafe, Frame &frame);
  void readFrame(ByteView data, const Frame &frame);
  void readTexts(ByteView data, const Frame &frame);
  void readPicture(ByteView data, const Frame &frame);

  void storeV1(const QString &text, const char *oldID, const char *newID);
  void storeV1Comment(ByteView block);
  /// Throws if the tag has more of what takes room in memory than any program writes.
  void count(qint64 framesOrTexts);
  /// Throws for a text that takes more memory than the whole tag has bytes.
  void checkLength(qint64 textBytes) const;
  bool isUnwanted(const QByteArray &id) const;
  /// Notes that the tag is malformed somewhere.
  void noteProblem() { tag.mEncounteredProblemDecoding = true; }
  /// The tag's title so far, for the log: frames are looked at once, however many lines there are.
  const QString &titleSoFar();

  MP3InfoTag &tag;
  qint64 counted = 0;
  qint64 longestText = 0;
  /// Where the texts of version 2.2 stand, of which the last of a kind counts.
  std::map<QByteArray, size_t> texts22;
  QString title;
  size_t framesSearched = 0;
};
