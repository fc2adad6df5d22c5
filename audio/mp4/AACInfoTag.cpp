#include "audio/mp4/AACInfoTag.h"

#include "audio/FileReader.h"
#include "audio/mp4/Atom.h"
#include "audio/mp4/MP4TagReader.h"
#include "audio/mp4/MP4TagWriter.h"
#include "support/Format.h"
#include "values/Keys.h"

namespace {

/// A text attribute; null if there is none.
QString textAt(const Dictionary &attributes, Key key) {
  const Value &value = attributes.value(key);
  return value.isText() ? value.toText() : QString();
}

}  // namespace

std::unique_ptr<AACInfoTag> AACInfoTag::tagWithMP4File(const QString &path) {
  return tagWithOpenMP4File(std::make_shared<FileReader>(path));
}

std::unique_ptr<AACInfoTag> AACInfoTag::tagWithOpenMP4File(const std::shared_ptr<FileReader> &file) {
  try {
    if (!file->isOpen()) return {};
    const AtomPtr root = Atom::atomContainerFromFile(file);
    auto tag = std::make_unique<AACInfoTag>();
    MP4TagReader(*tag, *root).read();
    return tag;
  } catch (const std::exception &) {  // atoms that cannot be: the walk has told the log
    return {};
  }
}

QString AACInfoTag::description() const {
  return formatText(QStringLiteral("<%@ %p:%@>"),
                    {QStringLiteral("AACInfoTag"), static_cast<const void *>(this), Value(mAttribs)});
}

QString AACInfoTag::title() const {
  return textAt(mAttribs, keys::title);
}
QString AACInfoTag::artist() const {
  return textAt(mAttribs, keys::artist);
}
QString AACInfoTag::album() const {
  return textAt(mAttribs, keys::album);
}
QString AACInfoTag::track() const {
  return textAt(mAttribs, keys::track);
}
QString AACInfoTag::year() const {
  constexpr qsizetype kDigits = 4;
  const QString whole = textAt(mAttribs, keys::year);
  return whole.size() < kDigits ? QString() : whole.left(kDigits);
}
QString AACInfoTag::genres() const {
  return textAt(mAttribs, keys::genre);
}
QString AACInfoTag::lyrics() const {
  return textAt(mAttribs, keys::lyrics);
}
QString AACInfoTag::bpm() const {
  return textAt(mAttribs, keys::bpm);
}
bool AACInfoTag::isPartOfCompilation() const {
  return mAttribs.value(keys::compilation).toBool();
}

void AACInfoTag::setStringForKey(const QString &text, Key key) {
  tagModified = true;
  mAttribs.set(key, text.isEmpty() ? Value() : Value(text));
}

void AACInfoTag::setTitle(const QString &title) {
  setStringForKey(title, keys::title);
}
void AACInfoTag::setArtist(const QString &artist) {
  setStringForKey(artist, keys::artist);
}
void AACInfoTag::setAlbum(const QString &album) {
  setStringForKey(album, keys::album);
}
void AACInfoTag::setTrack(const QString &track) {
  setStringForKey(track, keys::track);
}
void AACInfoTag::setYear(const QString &year) {
  setStringForKey(year, keys::year);
}
void AACInfoTag::setGenres(const QString &genres) {
  setStringForKey(genres, keys::genre);
}
void AACInfoTag::setLyrics(const QString &lyrics) {
  setStringForKey(lyrics, keys::lyrics);
}
void AACInfoTag::setBPM(const QString &bpm) {
  setStringForKey(bpm, keys::bpm);
}
void AACInfoTag::setIsPartOfCompilation(bool compilation) {
  tagModified = true;
  mAttribs.set(keys::compilation, compilation);
}

std::vector<ID3ImagePtr> AACInfoTag::images() const {
  return miTunesArtworks.empty() ? mImages : miTunesArtworks;
}

bool AACInfoTag::removeImageAtIndex(qsizetype index) {
  if (AudioInfoTag::removeImageAtIndex(index)) return true;
  if (index < 0 || index >= qsizetype(mImages.size())) return false;
  mImages.erase(mImages.begin() + index);
  tagModified = true;
  return true;
}

bool AACInfoTag::addImage(const ID3ImagePtr &image) {
  if (!image) return false;
  mImages.insert(mImages.end(), miTunesArtworks.begin(), miTunesArtworks.end());
  miTunesArtworks.clear();
  mImages.push_back(image);
  tagModified = true;
  return true;
}

void AACInfoTag::gatherFileMetadataFromPath(const QString &path) {
  const bool isComplete = duration() > 0 && bitrate() >= 1 && samplerate() > 0;
  if (!isComplete) AudioInfoTag::gatherFileMetadataFromPath(path);
}

bool AACInfoTag::modifySongFileAtPathError(const QString &path, QString *error) {
  QString text;
  const bool written = MP4TagWriter(*this).modifySongFileAtPath(path, &text);
  if (error && !text.isNull()) *error = text;
  return written;
}
