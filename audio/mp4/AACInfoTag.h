#pragma once

#include "audio/AudioInfoTag.h"

class Atom;
class FileReader;

/// The tag of an MP4 audio file: the attributes of its "ilst" and its pictures.
class AACInfoTag : public AudioInfoTag {
 public:
  AACInfoTag() = default;
  /// The tag read from a file; null if the file's atoms cannot be read. A file without an "ilst" has an empty
  /// tag.
  static std::unique_ptr<AACInfoTag> tagWithMP4File(const QString &path);
  /// The same from an open file; null for a closed one.
  static std::unique_ptr<AACInfoTag> tagWithOpenMP4File(const std::shared_ptr<FileReader> &file);

  /// Attributes under "title", "artist", "album", "year", "lyrics", "track", "genre", "bpm" (texts) and
  /// "compilation" (boolean).
  const Dictionary &attributes() const { return mAttribs; }
  QString description() const;

  QString title() const override;
  QString artist() const override;
  QString album() const override;
  QString track() const override;
  /// The first four characters of the attribute; null if it has fewer.
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
  bool removeImageAtIndex(qsizetype index) override;
  bool addImage(const ID3ImagePtr &image) override;
  void gatherFileMetadataFromPath(const QString &path) override;
  QString readVersion() const override { return QStringLiteral("AAC"); }
  QString writeVersion() const override { return QStringLiteral("AAC"); }
  bool modifySongFileAtPathError(const QString &path, QString *error) override;

 private:
  friend class MP4TagReader;
  friend class MP4TagWriter;
  void setStringForKey(const QString &text, Key key);

  Dictionary mAttribs = Dictionary::make();
  std::vector<ID3ImagePtr> mImages;
};
