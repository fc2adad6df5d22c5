#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "audio/SongFile.h"
#include "text/NumericCompare.h"

namespace {

using Text = QString (AudioInfoTag::*)() const;

QString textOf(SongFile &song, Text text) {
  const AudioInfoTag *tag = song.infotag();
  return tag ? (tag->*text)() : QString();
}

template <class T>
int order(T a, T b) {
  return a < b ? -1 : int(b < a);
}

/// Texts by worth, a missing one last.
int orderOfTexts(SongFile &song, SongFile &other, Text text) {
  const QString a = textOf(song, text), b = textOf(other, text);
  if (a.isNull() || b.isNull()) return order(a.isNull(), b.isNull());
  return compareByWorth(a, b);
}

/// A number of the tag; that of nothing for a song without one.
template <class T>
T numberOf(SongFile &song, T (*number)(const AudioInfoTag &)) {
  const AudioInfoTag *tag = song.infotag();
  return tag ? number(*tag) : T();
}

int lyricsRank(SongFile &song) {
  constexpr qsizetype kLong = 100;
  const qsizetype length = textOf(song, &AudioInfoTag::lyrics).size();
  return length == 0 ? 0 : (length < kLong ? 1 : 2);
}

int artRank(SongFile &song) {
  const qint32 count = numberOf<qint32>(song, [](const AudioInfoTag &tag) { return tag.numberOfImages(); });
  if (count > 0) return count + 1;
  return song.hasiTunesArtwork() == 1 ? 1 : count;
}

using Comparison = int (SongFile::*)(SongFile &);

int chained(SongFile &song, SongFile &other, std::initializer_list<Comparison> chain) {
  for (const Comparison comparison : chain) {
    if (const int result = (song.*comparison)(other)) return result;
  }
  return 0;
}

}  // namespace

int SongFile::compareTo(qint32 a, qint32 b) {
  return order(b, a);
}

int SongFile::rawCompareArtist(SongFile &other) {
  return orderOfTexts(*this, other, &AudioInfoTag::artist);
}
int SongFile::rawCompareTitle(SongFile &other) {
  return orderOfTexts(*this, other, &AudioInfoTag::title);
}
int SongFile::rawCompareAlbum(SongFile &other) {
  return orderOfTexts(*this, other, &AudioInfoTag::album);
}
int SongFile::rawCompareGenre(SongFile &other) {
  return orderOfTexts(*this, other, &AudioInfoTag::genres);
}
int SongFile::rawCompareReadVersion(SongFile &other) {
  const QString a = textOf(*this, &AudioInfoTag::readVersion);
  const QString b = textOf(other, &AudioInfoTag::readVersion);
  if (a.isNull() || b.isNull()) return order(a.isNull(), b.isNull());
  return a.compare(b, Qt::CaseInsensitive);
}

int SongFile::rawCompareTrack(SongFile &other) {
  const bool isMissing = textOf(*this, &AudioInfoTag::track).isNull();
  const bool isMissingThere = textOf(other, &AudioInfoTag::track).isNull();
  if (isMissing || isMissingThere) return order(isMissing, isMissingThere);
  const auto number = [](const AudioInfoTag &tag) { return tag.trackNumber(); };
  return order(numberOf<qint32>(*this, number), numberOf<qint32>(other, number));
}

int SongFile::rawCompareYear(SongFile &other) {
  const QString a = textOf(*this, &AudioInfoTag::year), b = textOf(other, &AudioInfoTag::year);
  if (a.isNull() || b.isNull()) return order(!a.isNull(), !b.isNull());
  return order(Value(a).toInteger(), Value(b).toInteger());
}

int SongFile::rawCompareLyrics(SongFile &other) {
  return order(lyricsRank(*this), lyricsRank(other));
}
int SongFile::rawCompareArt(SongFile &other) {
  return order(artRank(*this), artRank(other));
}
int SongFile::rawCompareActivity(SongFile &other) {
  return compareTo(mStatus, other.mStatus);
}

int SongFile::rawCompareIndex(SongFile &other) {
  const auto index = [](const AudioInfoTag &tag) { return tag.playlistIndex(); };
  return order(numberOf<qint64>(*this, index), numberOf<qint64>(other, index));
}

int SongFile::rawCompareBPM(SongFile &other) {
  return order(Value(textOf(*this, &AudioInfoTag::bpm)).toInteger(),
               Value(textOf(other, &AudioInfoTag::bpm)).toInteger());
}

int SongFile::rawCompareIsCompilation(SongFile &other) {
  const auto flag = [](const AudioInfoTag &tag) { return tag.isPartOfCompilation(); };
  return order(numberOf<bool>(*this, flag), numberOf<bool>(other, flag));
}

int SongFile::rawCompareDuration(SongFile &other) {
  const auto milliseconds = [](const AudioInfoTag &tag) {
    const double value = std::trunc(double(tag.duration()) * 1000.0);
    return std::isnan(value) ? 0.0 : value;
  };
  return order(numberOf<double>(*this, milliseconds), numberOf<double>(other, milliseconds));
}

int SongFile::compareArtist(SongFile &other) {
  return chained(*this, other,
                 {&SongFile::rawCompareArtist, &SongFile::rawCompareAlbum, &SongFile::rawCompareTrack});
}
int SongFile::compareTitle(SongFile &other) {
  return chained(*this, other,
                 {&SongFile::rawCompareTitle, &SongFile::rawCompareArtist, &SongFile::rawCompareAlbum});
}
int SongFile::compareAlbum(SongFile &other) {
  return chained(*this, other,
                 {&SongFile::rawCompareAlbum, &SongFile::rawCompareTrack, &SongFile::rawCompareTitle,
                  &SongFile::rawCompareArtist});
}
int SongFile::compareTrack(SongFile &other) {
  return chained(*this, other,
                 {&SongFile::rawCompareTrack, &SongFile::rawCompareAlbum, &SongFile::rawCompareTitle,
                  &SongFile::rawCompareArtist});
}
int SongFile::compareYear(SongFile &other) {
  return chained(*this, other,
                 {&SongFile::rawCompareYear, &SongFile::rawCompareAlbum, &SongFile::rawCompareArtist,
                  &SongFile::rawCompareTrack});
}
int SongFile::compareGenre(SongFile &other) {
  return chained(*this, other,
                 {&SongFile::rawCompareGenre, &SongFile::rawCompareAlbum, &SongFile::rawCompareArtist});
}
int SongFile::compareArt(SongFile &other) {
  return chained(*this, other,
                 {&SongFile::rawCompareArt, &SongFile::rawCompareArtist, &SongFile::rawCompareAlbum,
                  &SongFile::rawCompareTrack});
}
int SongFile::compareReadVersion(SongFile &other) {
  return chained(*this, other,
                 {&SongFile::rawCompareReadVersion, &SongFile::rawCompareAlbum, &SongFile::rawCompareArtist});
}
int SongFile::compareBPM(SongFile &other) {
  return chained(*this, other,
                 {&SongFile::rawCompareBPM, &SongFile::rawCompareTitle, &SongFile::rawCompareArtist,
                  &SongFile::rawCompareAlbum});
}
int SongFile::compareDuration(SongFile &other) {
  return chained(*this, other,
                 {&SongFile::rawCompareDuration, &SongFile::rawCompareTitle, &SongFile::rawCompareArtist,
                  &SongFile::rawCompareAlbum});
}
int SongFile::compareIndex(SongFile &other) {
  return chained(*this, other, {&SongFile::rawCompareIndex, &SongFile::compareTitle});
}
int SongFile::compareCompilation(SongFile &other) {
  return chained(*this, other, {&SongFile::rawCompareIsCompilation, &SongFile::compareAlbum});
}

int SongFile::compareLyrics(SongFile &other) {
  const int result = rawCompareLyrics(other);
  return result != 0 ? result : other.compareAlbum(*this);
}

int SongFile::compareActivity(SongFile &other) {
  return rawCompareActivity(other);
}
