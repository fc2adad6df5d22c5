#include <atomic>

#include "audio/AudioInfoTag.h"
#include "audio/CachedInfoTag.h"
#include "audio/FileReader.h"
#include "audio/SongFile.h"
#include "audio/mp4/AACInfoTag.h"
#include "audio/tags/MP3InfoTag.h"
#include "support/BMLog.h"
#include "values/Keys.h"

namespace {

std::atomic<bool> discardsMalformedInfo{false};
std::atomic<bool> discardsUnrecognizedInfo{false};

AudioInfoTagPtr tagOfKind(qint32 kind, const std::shared_ptr<FileReader> &file, const QString &path) {
  if (kind == SongFile::kMPEGData) return MP3InfoTag::tagWithOpenMPEGFile(*file, path);
  if (kind == SongFile::kMP4Data) return AACInfoTag::tagWithOpenMP4File(file);
  return {};
}

qint32 kindByName(const QString &path) {
  if (SongFile::claimsToBeMP3(path)) return SongFile::kMPEGData;
  return SongFile::claimsToBeAAC(path) ? SongFile::kMP4Data : SongFile::kUnknownData;
}

AudioInfoTagPtr emptyTagByName(const QString &path) {
  const qint32 kind = kindByName(path);
  if (kind == SongFile::kMPEGData) return std::make_unique<MP3InfoTag>();
  if (kind == SongFile::kMP4Data) return std::make_unique<AACInfoTag>();
  return {};
}

/// "3/12"; the total only if it can be true.
QString trackTextOf(const Dictionary &track) {
  const qint64 number = track.value(keys::TrackNumber).toInteger();
  const qint64 count = track.value(keys::TrackCount).toInteger();
  if (number == 0) return {};
  const QString text = QString::number(number);
  return count != 0 && count >= number ? text + u'/' + QString::number(count) : text;
}

}  // namespace

AudioInfoTagPtr AudioInfoTag::tagWithPath(const QString &path) {
  try {
    const auto file = std::make_shared<FileReader>(path);
    const qint32 sniffed = SongFile::songDataTypeOfFile(*file, path);
    const qint32 kind = sniffed == SongFile::kUnknownData ? kindByName(path) : sniffed;
    AudioInfoTagPtr tag = tagOfKind(kind, file, path);
    if (!tag) return {};
    tag->gatherTagsFromPathname(path);
    tag->gatherFileMetadataFromPath(path);
    return tag;
  } catch (const std::exception &problem) {  // out of memory: this file has no tag, the others go on
    BMLog("!! tagWithPath %@: %@", path, QString::fromUtf8(problem.what()));
  }
  return {};
}

AudioInfoTagPtr AudioInfoTag::tagWithCachedInfo(const Dictionary &info) {
  if (info.isNull()) return {};
  auto tag = std::make_unique<CachedInfoTag>();
  tag->setCachedInfo(info);
  tag->setIsLazy(true);
  return tag;
}

AudioInfoTagPtr AudioInfoTag::tagWithiTunesTrackInfoPath(const Dictionary &track, const QString &path) {
  AudioInfoTagPtr tag = path.isNull() ? AudioInfoTagPtr() : emptyTagByName(path);
  if (!tag) return {};
  constexpr qint64 kLastYear = 2049;
  tag->setTitle(track.value(keys::Name).toText());
  tag->setArtist(track.value(keys::Artist).toText());
  tag->setAlbum(track.value(keys::Album).toText());
  tag->setGenres(track.value(keys::Genre).toText());
  const qint64 year = track.value(keys::Year).toInteger();
  if (year >= 1 && year <= kLastYear) tag->setYear(QString::number(year));
  const QString number = trackTextOf(track);
  if (!number.isNull()) tag->setTrack(number);
  if (track.contains(keys::Compilation)) tag->setIsPartOfCompilation(true);
  tag->gatherFileMetadataFromiTunesTrackInfo(track);
  const Value &artworks = track.value(keys::ArtworkCount);
  tag->setLazyNumberOfImages(artworks.isNull() ? -1 : qint32(artworks.toInteger()));
  tag->setIsLazy(true);
  return tag;
}

bool AudioInfoTag::shouldDiscardMalformedInfo() {
  return discardsMalformedInfo;
}
void AudioInfoTag::setShouldDiscardMalformedInfo(bool discard) {
  discardsMalformedInfo = discard;
}
bool AudioInfoTag::shouldDiscardUnrecognizedInfo() {
  return discardsUnrecognizedInfo;
}
void AudioInfoTag::setShouldDiscardUnrecognizedInfo(bool discard) {
  discardsUnrecognizedInfo = discard;
}
