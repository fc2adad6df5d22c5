#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "audio/ID3Image.h"
#include "values/NotFound.h"
#include "values/Value.h"

class AudioInfoTag;
using AudioInfoTagPtr = std::unique_ptr<AudioInfoTag>;

/// The metadata of one audio file: texts, flags, pictures, and the audio's facts. A text that is not there is
/// null. Used by one thread at a time.
class AudioInfoTag {
 public:
  AudioInfoTag() = default;
  AudioInfoTag(const AudioInfoTag &) = delete;
  virtual ~AudioInfoTag() = default;

  /// The tag read from a file, by its content and else by its name; null if it has none that can be read.
  /// Never throws.
  static AudioInfoTagPtr tagWithPath(const QString &path);
  /// A read-only tag served from a dictionary of the info cache; null for a null one.
  static AudioInfoTagPtr tagWithCachedInfo(const Dictionary &info);
  /// A lazy tag made of the library's own entry; the file is not touched. The kind follows the name; null for
  /// others and without a path.
  static AudioInfoTagPtr tagWithiTunesTrackInfoPath(const Dictionary &track, const QString &path);

  // What the concrete kinds know. The base has no texts, ignores the setters and refuses pictures.
  virtual QString title() const { return {}; }
  virtual QString artist() const { return {}; }
  virtual QString album() const { return {}; }
  virtual QString track() const { return {}; }
  virtual QString year() const { return {}; }
  virtual QString genres() const { return {}; }
  virtual QString lyrics() const { return {}; }
  virtual QString bpm() const { return {}; }
  virtual bool isPartOfCompilation() const { return false; }
  virtual void setTitle(const QString &) {}
  virtual void setArtist(const QString &) {}
  virtual void setAlbum(const QString &) {}
  virtual void setTrack(const QString &) {}
  virtual void setYear(const QString &) {}
  virtual void setGenres(const QString &) {}
  virtual void setLyrics(const QString &) {}
  virtual void setBPM(const QString &) {}
  virtual void setIsPartOfCompilation(bool) {}

  /// The pictures, in order.
  virtual std::vector<ID3ImagePtr> images() const { return miTunesArtworks; }
  /// How many there are; of a lazy tag what the library told, and then -1 is "not known".
  virtual qint32 numberOfImages() const;
  /// The bytes of all pictures.
  virtual quint64 numberOfArtworkBytes() const;
  /// Removes all, as far as each removal works.
  virtual void removeAllImages();
  virtual bool removeImageAtIndex(qsizetype index);
  virtual bool addImage(const ID3ImagePtr &image);
  /// The first picture scaled down, as PNG bytes; none without a picture.
  virtual QByteArray imageIconNoLargerThan(double width, double height);

  /// The facts under the keys "kMDItemDurationSeconds" (s), "kMDItemAudioBitRate" (kbit/s),
  /// "kMDItemAudioSampleRate" (Hz); null before any is known.
  virtual Dictionary metadata() const { return mMetadata; }
  /// Asks the audio itself, and the platform's metadata service for what it does not tell.
  virtual void gatherFileMetadataFromPath(const QString &path);
  /// "1.1", "2.3.0", "AAC" and the like: what was read and what a write would make; null if there is none.
  virtual QString readVersion() const { return {}; }
  virtual QString writeVersion() const { return {}; }
  /// Writes the tag into the file at a path, which need not be the one it was read from. False with a text
  /// for the user (that may be null) on failure. Never throws.
  virtual bool modifySongFileAtPathError(const QString & /*path*/, QString * /*error*/) { return false; }

  /// A title from the file's name, if there is none.
  void gatherTagsFromPathname(const QString &path);
  void gatherFileMetadataFromiTunesTrackInfo(const Dictionary &track);
  /// Takes the picture of one file of the music application's artwork cache.
  void addiTunesArtworkAtPath(const QString &path);

  qint32 trackNumber() const;
  qint32 numberOfTracksOnAlbum() const;
  /// "Beatles, The" as "The Beatles", and back.
  QString normalizedArtist() const;
  QString reversedArtist() const;
  /// Seconds; -1 if not known.
  float duration() const;
  qint32 bitrate() const;
  qint32 samplerate() const;
  /// "3:05", "1:01:02"; null unless the duration is above 0.
  QString formattedDuration() const;
  /// True if title, artist, album, genres or year hold the text, whatever its case.
  bool matchString(const QString &text) const;

  void setPlayListAndIndex(const QString &playlist, qint64 index);
  const QString &playlist() const { return _playlist; }
  qint64 playlistIndex() const { return _playlist.isNull() ? kNotFound : _playlistIndex; }
  bool tagHasBeenModified() const { return tagModified; }
  void setTagHasBeenModified(bool modified) { tagModified = modified; }
  bool encounteredProblemDecoding() const { return mEncounteredProblemDecoding; }
  /// Made without reading the file. Becoming so also forgets that anything was changed.
  void setIsLazy(bool lazy);
  bool isLazy() const { return mLazy; }
  void setLazyNumberOfImages(qint32 count) { mLazyNumberOfImages = count; }
  bool hasCachedImageIcon() const { return !_cachedIcon.isNull(); }
  void doCacheImageIcon(const QByteArray &icon) { _cachedIcon = icon; }

  /// For an archive: playlist, index and the flag of a change.
  Value encode() const;
  void decode(const Value &archived);

  /// Whether the parsers leave out what is malformed, or what nobody knows; both false, for all tags.
  static bool shouldDiscardMalformedInfo();
  static void setShouldDiscardMalformedInfo(bool discard);
  static bool shouldDiscardUnrecognizedInfo();
  static void setShouldDiscardUnrecognizedInfo(bool discard);

  /// The numbered genres: there are none in this system, by decision. The rules below are written for a list.
  static const QStringList &allGenres();
  static QString genreForIndex(qint64 index);
  static qint64 indexOfGenre(const QString &name);
  /// The longest known name inside a free text; null if there is none.
  static QString standardizedGenreFrom(const QString &text);
  /// A stored genre text as names: numbers expanded, repeats gone.
  static QString expandedGenres(const QString &stored);

 protected:
  QByteArray _cachedIcon;
  bool tagModified = false;
  bool mEncounteredProblemDecoding = false;
  bool mLazy = false;
  qint32 mLazyNumberOfImages = -1;
  QString _playlist;
  qint64 _playlistIndex = kNotFound;
  std::vector<ID3ImagePtr> miTunesArtworks;
  Dictionary mMetadata;
};
