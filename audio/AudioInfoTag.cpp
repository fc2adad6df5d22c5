#include "audio/AudioInfoTag.h"

#include <QFileInfo>
#include <cmath>
#include <limits>
#include <mutex>

#include "audio/ByteView.h"
#include "audio/FileReader.h"
#include "platform/Platform.h"
#include "support/ImageIcon.h"
#include "text/Search.h"
#include "values/Keys.h"

namespace {

/// The last picture that became an icon, for all tags: the songs of an album show one picture.
struct IconMemo {
  std::mutex lock;
  QByteArray picture, icon;
};

IconMemo &iconMemo() {
  static IconMemo memo;
  return memo;
}

/// Width and height of a PNG file's picture, from its first chunk.
std::pair<quint32, quint32> sizeOfPng(const QByteArray &png) {
  const ByteView bytes{png};
  return {bytes.u32(16), bytes.u32(20)};
}

qint32 integerOf(const QString &text) {
  using Limits = std::numeric_limits<qint32>;
  return qint32(std::clamp<qint64>(Value(text).toInteger(), Limits::min(), Limits::max()));
}

/// A whole number from one that may be none or too large.
qint32 bounded(double number) {
  using Limits = std::numeric_limits<qint32>;
  return std::isnan(number) ? 0 : qint32(std::clamp(number, double(Limits::min()), double(Limits::max())));
}

/// What a file's metadata are: those set, over those that were.
Dictionary merged(const Dictionary &before) {
  return before.isNull() ? Dictionary::make() : before.copyMembers(true);
}

QString twoDigits(qint64 number) {
  return QStringLiteral("%1").arg(number, 2, 10, QChar(u'0'));
}

}  // namespace

qint32 AudioInfoTag::numberOfImages() const {
  return mLazy ? mLazyNumberOfImages : qint32(images().size());
}

quint64 AudioInfoTag::numberOfArtworkBytes() const {
  quint64 bytes = 0;
  for (const ID3ImagePtr &image : images()) bytes += quint64(image->imageData().size());
  return bytes;
}

void AudioInfoTag::removeAllImages() {
  while (numberOfImages() > 0 && removeImageAtIndex(0)) {
  }
}

bool AudioInfoTag::removeImageAtIndex(qsizetype) {
  _cachedIcon = {};
  const bool hadArtwork = !miTunesArtworks.empty();
  miTunesArtworks.clear();
  return hadArtwork;
}

bool AudioInfoTag::addImage(const ID3ImagePtr &) {
  return false;
}

QByteArray AudioInfoTag::imageIconNoLargerThan(double width, double height) {
  if (!_cachedIcon.isNull()) {
    const auto [across, down] = sizeOfPng(_cachedIcon);
    if (across <= width && down <= height) return _cachedIcon;
    _cachedIcon = {};
  }
  const std::vector<ID3ImagePtr> pictures = images();
  if (pictures.empty()) return _cachedIcon;
  const QByteArray &first = pictures.front()->imageData();
  std::lock_guard held(iconMemo().lock);
  if (iconMemo().icon.isNull() || iconMemo().picture != first) {
    iconMemo().icon = ::imageIconNoLargerThan(first, width, height);
    iconMemo().picture = first;
  }
  _cachedIcon = iconMemo().icon;
  return _cachedIcon;
}

void AudioInfoTag::gatherFileMetadataFromPath(const QString &path) {
  const Dictionary told = platform().fileFacts->metadata(path);
  if (told.isNull()) return;
  const Dictionary facts = merged(mMetadata);
  for (const Key key :
       {keys::kMDItemDurationSeconds, keys::kMDItemAudioBitRate, keys::kMDItemAudioSampleRate}) {
    if (!told.value(key).isNull()) facts.set(key, told.value(key));
  }
  mMetadata = facts;
}

void AudioInfoTag::gatherTagsFromPathname(const QString &path) {
  if (!title().isNull()) return;
  QString name = QFileInfo(path).fileName().trimmed();
  constexpr qsizetype kExtension = 4;
  if (name.size() > kExtension && name[name.size() - kExtension] == u'.') name.chop(kExtension);
  setTitle(name);
}

void AudioInfoTag::gatherFileMetadataFromiTunesTrackInfo(const Dictionary &track) {
  // The library rounds up, and the count of frames has a start that is not heard.
  constexpr float kCorrection = 0.75F;
  const Dictionary facts = merged(mMetadata);
  const Value &time = track.value(keys::TotalTime);
  if (!time.isNull()) {
    facts.set(keys::kMDItemDurationSeconds, double(float(time.toDouble()) / 1000.0F - kCorrection));
  }
  if (!track.value(keys::BitRate).isNull()) facts.set(keys::kMDItemAudioBitRate, track.value(keys::BitRate));
  if (!track.value(keys::SampleRate).isNull()) {
    facts.set(keys::kMDItemAudioSampleRate, track.value(keys::SampleRate));
  }
  mMetadata = facts;
}

void AudioInfoTag::addiTunesArtworkAtPath(const QString &path) {
  constexpr qint64 kSmallest = 1024;
  const FileReader file(path);
  if (file.size() < kSmallest) return;
  const QByteArray bytes = file.read(0, file.size());
  const ByteView view{bytes};
  const qint64 header = view.u32(0);
  if (header > view.size() - kSmallest) return;
  const QString type =
      view.hasAt(header + 48, "PNGf") ? QStringLiteral("image/png") : QStringLiteral("image/jpeg");
  miTunesArtworks = {ID3Image::imageWithDataMimeType(view.from(header + 60).copy(), type)};
}

qint32 AudioInfoTag::trackNumber() const {
  const QString text = track();
  const qsizetype slash = text.indexOf(u'/');
  return integerOf(slash > 0 ? text.left(slash) : text);
}

qint32 AudioInfoTag::numberOfTracksOnAlbum() const {
  const QString text = track();
  const qsizetype slash = text.indexOf(u'/');
  return integerOf(slash >= 0 && slash < text.size() - 1 ? text.mid(slash + 1) : text);
}

QString AudioInfoTag::normalizedArtist() const {
  const QString name = artist();
  const qsizetype comma = name.indexOf(u',');
  if (comma < 0) return name;
  qsizetype start = comma + 1;
  while (start < name.size() && name[start] == u' ') ++start;
  const qsizetype end = name.indexOf(u' ', start);
  const QString before = name.left(comma);
  if (end < 0) return name.mid(start) + u' ' + before;
  return name.mid(start, end - start) + u' ' + before + name.mid(end);
}

QString AudioInfoTag::reversedArtist() const {
  const QString name = artist();
  const qsizetype space = name.lastIndexOf(u' ');
  if (space < 0 || name.contains(u',')) return name;
  return name.mid(space + 1) + QStringLiteral(", ") + name.left(space);
}

float AudioInfoTag::duration() const {
  const Value value = metadata().value(keys::kMDItemDurationSeconds);
  return value.isNull() ? -1.0F : float(value.toDouble());
}

qint32 AudioInfoTag::bitrate() const {
  const Value value = metadata().value(keys::kMDItemAudioBitRate);
  return value.isNull() ? -1 : bounded(std::ceil(float(value.toDouble())));
}

qint32 AudioInfoTag::samplerate() const {
  const Value value = metadata().value(keys::kMDItemAudioSampleRate);
  return value.isNull() ? -1 : bounded(value.toDouble());
}

QString AudioInfoTag::formattedDuration() const {
  const float seconds = duration();
  if (!(seconds > 0)) return {};
  constexpr qint64 kHour = 3600, kMinute = 60;
  const qint64 total = bounded(std::ceil(seconds));
  const qint64 minutes = total % kHour / kMinute;
  const QString tail = u':' + twoDigits(total % kMinute);
  if (total < kHour) return QString::number(minutes) + tail;
  return QString::number(total / kHour) + u':' + twoDigits(minutes) + tail;
}

bool AudioInfoTag::matchString(const QString &text) const {
  return containsString(title(), text) || containsString(artist(), text) || containsString(album(), text) ||
         containsString(genres(), text) || containsString(year(), text);
}

void AudioInfoTag::setPlayListAndIndex(const QString &playlist, qint64 index) {
  _playlist = playlist;
  _playlistIndex = index;
}

void AudioInfoTag::setIsLazy(bool lazy) {
  mLazy = lazy;
  if (lazy) tagModified = false;
}

Value AudioInfoTag::encode() const {
  const Dictionary archive = Dictionary::make();
  if (!_playlist.isNull()) archive.set(keys::playlist, _playlist);
  archive.set(keys::playlistIndex, _playlistIndex);
  archive.set(keys::id3Modified, tagModified);
  return archive;
}

void AudioInfoTag::decode(const Value &archived) {
  const Dictionary &archive = archived.toDictionary();
  const Value &name = archive.value(keys::playlist);
  _playlist = name.isText() ? name.toText() : QString();
  _playlistIndex = archive.value(keys::playlistIndex).toInteger();
  tagModified = archive.value(keys::id3Modified).toBool();
}
