#include "audio/CachedInfoTag.h"

#include "audio/CachedInfoKeys.h"
#include "platform/Platform.h"
#include "support/BMLog.h"

namespace {

constexpr double kIconWidth = 28, kIconHeight = 14;

QString textAt(const Dictionary &info, Key key) {
  const Value &value = info.value(key);
  return value.isText() ? value.toText() : QString();
}

void setText(const Dictionary &info, Key key, const QString &text) {
  if (!text.isNull()) info.set(key, text);
}

}  // namespace

Dictionary CachedInfoTag::infoDictForTagPath(AudioInfoTag &tag, const QString &path) {
  const Dictionary info = Dictionary::make();
  const std::optional<Date> date = platform().fileFacts->modificationDate(path);
  if (date) {
    info.set(cachedinfo::modified, *date);
  } else {
    BMLog("mod date nil for %@", path);
  }
  setText(info, cachedinfo::title, tag.title());
  setText(info, cachedinfo::artist, tag.artist());
  setText(info, cachedinfo::album, tag.album());
  setText(info, cachedinfo::track, tag.track());
  setText(info, cachedinfo::year, tag.year());
  setText(info, cachedinfo::genres, tag.genres());
  setText(info, cachedinfo::bpm, tag.bpm());
  setText(info, cachedinfo::lyrics, tag.lyrics());
  if (!tag.metadata().isNull()) info.set(cachedinfo::metadata, tag.metadata());
  const qint32 pictures = tag.numberOfImages();
  if (pictures >= 1) info.set(cachedinfo::numberOfImages, pictures);
  info.set(cachedinfo::artworkBytes, qint64(tag.numberOfArtworkBytes()));
  if (tag.isPartOfCompilation()) info.set(cachedinfo::compilation, QStringLiteral("y"));
  const QByteArray icon = pictures != 0 ? tag.imageIconNoLargerThan(kIconWidth, kIconHeight) : QByteArray();
  if (!icon.isEmpty()) info.set(cachedinfo::icon, icon);
  return info;
}

QString CachedInfoTag::title() const {
  return textAt(mCachedInfo, cachedinfo::title);
}
QString CachedInfoTag::artist() const {
  return textAt(mCachedInfo, cachedinfo::artist);
}
QString CachedInfoTag::album() const {
  return textAt(mCachedInfo, cachedinfo::album);
}
QString CachedInfoTag::track() const {
  return textAt(mCachedInfo, cachedinfo::track);
}
QString CachedInfoTag::year() const {
  return textAt(mCachedInfo, cachedinfo::year);
}
QString CachedInfoTag::genres() const {
  return textAt(mCachedInfo, cachedinfo::genres);
}
QString CachedInfoTag::lyrics() const {
  return textAt(mCachedInfo, cachedinfo::lyrics);
}
QString CachedInfoTag::bpm() const {
  return textAt(mCachedInfo, cachedinfo::bpm);
}
bool CachedInfoTag::isPartOfCompilation() const {
  return mCachedInfo.contains(cachedinfo::compilation);
}

qint32 CachedInfoTag::numberOfImages() const {
  return qint32(mCachedInfo.value(cachedinfo::numberOfImages).toInteger());
}

quint64 CachedInfoTag::numberOfArtworkBytes() const {
  return quint64(mCachedInfo.value(cachedinfo::artworkBytes).toInteger());
}

Dictionary CachedInfoTag::metadata() const {
  return mCachedInfo.value(cachedinfo::metadata).toDictionary();
}

QByteArray CachedInfoTag::imageIconNoLargerThan(double, double) {
  if (_cachedIcon.isNull()) _cachedIcon = mCachedInfo.value(cachedinfo::icon).toData();
  if (_cachedIcon.isEmpty()) _cachedIcon = mCachedInfo.value(cachedinfo::tiff).toData();
  return _cachedIcon;
}

void CachedInfoTag::whineAboutImmutability() const {
  BMLog("Cannot mutate %@!", QStringLiteral("<CachedInfoTag 0x%1>").arg(quintptr(this), 0, 16));
}

bool CachedInfoTag::removeImageAtIndex(qsizetype) {
  whineAboutImmutability();
  return false;
}

bool CachedInfoTag::addImage(const ID3ImagePtr &) {
  whineAboutImmutability();
  return false;
}
