#pragma once

#include <QByteArray>
#include <deque>
#include <utility>
#include <variant>

#include "audio/AudioInfoTag.h"

/// The lyrics of a file. Absent texts are null.
struct TextBlock {
  QString lang, desc, text;
};

/// What a frame holds: texts, lyrics, a picture, or the bytes of a frame that nobody here understands, with
/// the two flag bytes ahead of them where the tag's version has any.
using FrameValue = std::variant<QStringList, TextBlock, ID3ImagePtr, QByteArray>;

/// A run of bytes in a file; both 0 for none.
struct FileRange {
  quint64 start = 0;
  quint64 length = 0;
};

class FileReader;

/// The tag of an MPEG audio file: all its frames in their order, known or not, so that they can be written
/// back. The pseudo id "[image]" stands for every picture.
class MP3InfoTag : public AudioInfoTag {
 public:
  struct Frame {
    QByteArray id;
    FrameValue value;
  };

  MP3InfoTag() = default;
  /// The tag read from a file; null if the file or its tag cannot be read.
  static std::unique_ptr<MP3InfoTag> tagWithMPEGFile(const QString &path);
  /// The same from an open file; the path is for the log.
  static std::unique_ptr<MP3InfoTag> tagWithOpenMPEGFile(const FileReader &file, const QString &path);

  const std::deque<Frame> &frames() const { return mFrames; }
  FileRange id3v1Range() const { return _id3v1Range; }
  FileRange id3v2Range() const { return _id3v2Range; }
  void setReadVersion(const QString &version) { mReadVersionString = version; }

  /// The value of the first id's first frame, and only if there is none of the second's; null if neither.
  const FrameValue *firstObjectForFrameIDOrID(QByteArrayView id, QByteArrayView otherID) const;
  QString firstStringForFrameIDOrID(QByteArrayView id, QByteArrayView otherID) const;
  void setObjectForFrameID(FrameValue value, const QByteArray &id);
  void addObjectForFrameID(FrameValue value, const QByteArray &id);
  void removeAllObjectsForFrameID(QByteArrayView id);
  void setStringForFrameID(const QString &text, const QByteArray &id);

  QString title() const override;
  QString artist() const override;
  QString album() const override;
  QString track() const override;
  QString year() const override;
  QString genres() const override;
  QString lyrics() const override;
  QString bpm() const override;
  bool isPartOfCompilation() const override;
  void setTitle(const QString &title) override;
  void setArtist(const QString &artist) override;
  void setAlbum(const QString &album) override;
  void setTrack(const QString &track) override;
  void setYear(const QString &year) override;
  void setGenres(const QString &genres) override;
  void setLyrics(const QString &lyrics) override;
  void setBPM(const QString &bpm) override;
  void setIsPartOfCompilation(bool compilation) override;
  std::vector<ID3ImagePtr> images() const override;
  qint32 numberOfImages() const override;
  bool removeImageAtIndex(qsizetype index) override;
  bool addImage(const ID3ImagePtr &image) override;
  void gatherFileMetadataFromPath(const QString &path) override;
  QString readVersion() const override { return mReadVersionString; }
  QString writeVersion() const override;
  bool modifySongFileAtPathError(const QString &path, QString *error) override;

  /// True if a version 1.1 block can hold all that the tag says.
  bool canWriteID3v11WithoutLoss() const;

 private:
  friend class ID3Reader;
  void setStringForV22OrForV24(const QString &text, const QByteArray &v22, const QByteArray &v24);
  bool isVersion22() const { return mReadVersionString.startsWith(u"2.2"); }

  /// Many small frames in small pieces of memory.
  std::deque<Frame> mFrames;
  QString mReadVersionString;
  FileRange _id3v1Range;
  FileRange _id3v2Range;
};
