#pragma once

#include "audio/AudioInfoTag.h"

/// A read-only tag served from a dictionary of the info cache. Setters change nothing but the log.
class CachedInfoTag : public AudioInfoTag {
 public:
  void setCachedInfo(const Dictionary &info) { mCachedInfo = info; }
  /// What the cache keeps of a tag: texts, facts, counts and a small icon; no pictures.
  static Dictionary infoDictForTagPath(AudioInfoTag &tag, const QString &path);

  QString title() const override;
  QString artist() const override;
  QString album() const override;
  QString track() const override;
  QString year() const override;
  QString genres() const override;
  QString lyrics() const override;
  QString bpm() const override;
  bool isPartOfCompilation() const override;
  void setTitle(const QString &) override { whineAboutImmutability(); }
  void setArtist(const QString &) override { whineAboutImmutability(); }
  void setAlbum(const QString &) override { whineAboutImmutability(); }
  void setTrack(const QString &) override { whineAboutImmutability(); }
  void setYear(const QString &) override { whineAboutImmutability(); }
  void setGenres(const QString &) override { whineAboutImmutability(); }
  void setLyrics(const QString &) override { whineAboutImmutability(); }
  void setBPM(const QString &) override { whineAboutImmutability(); }
  void setIsPartOfCompilation(bool) override { whineAboutImmutability(); }
  qint32 numberOfImages() const override;
  quint64 numberOfArtworkBytes() const override;
  void removeAllImages() override { whineAboutImmutability(); }
  bool removeImageAtIndex(qsizetype index) override;
  bool addImage(const ID3ImagePtr &image) override;
  /// The kept icon, whatever size is asked for.
  QByteArray imageIconNoLargerThan(double width, double height) override;
  Dictionary metadata() const override;

 private:
  void whineAboutImmutability() const;

  Dictionary mCachedInfo;
};
