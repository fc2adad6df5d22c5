#include "audio/tags/MP3InfoTag.h"

#include "audio/FileReader.h"
#include "audio/tags/FrameIDs.h"
#include "audio/tags/ID3Reader.h"
#include "audio/tags/MP3Header.h"
#include "support/BMLog.h"
#include "values/Keys.h"

std::unique_ptr<MP3InfoTag> MP3InfoTag::tagWithMPEGFile(const QString &path) {
  return tagWithOpenMPEGFile(FileReader(path), path);
}

std::unique_ptr<MP3InfoTag> MP3InfoTag::tagWithOpenMPEGFile(const FileReader &file, const QString &path) {
  try {
    auto tag = std::make_unique<MP3InfoTag>();
    ID3Reader(*tag).readFile(file, path);
    return tag;
  } catch (const std::exception &) {  // a file whose tag cannot be read has none
    return {};
  }
}

QString MP3InfoTag::title() const {
  return firstStringForFrameIDOrID("TIT2", "TT2");
}

QString MP3InfoTag::artist() const {
  return firstStringForFrameIDOrID("TPE1", "TP1");
}

QString MP3InfoTag::album() const {
  return firstStringForFrameIDOrID("TALB", "TAL");
}

QString MP3InfoTag::track() const {
  return firstStringForFrameIDOrID("TRCK", "TRK");
}

QString MP3InfoTag::year() const {
  return firstStringForFrameIDOrID("TDRC", "TYE");
}

QString MP3InfoTag::genres() const {
  return firstStringForFrameIDOrID("TCON", "TCO");
}

QString MP3InfoTag::bpm() const {
  return firstStringForFrameIDOrID("TBPM", "TBP");
}

QString MP3InfoTag::lyrics() const {
  const FrameValue *value = firstObjectForFrameIDOrID("USLT", "ULT");
  const TextBlock *block = value ? std::get_if<TextBlock>(value) : nullptr;
  return block ? block->text : QString();
}

bool MP3InfoTag::isPartOfCompilation() const {
  return Value(firstStringForFrameIDOrID("TCMP", "TCP")).toInteger() > 0;
}

void MP3InfoTag::setTitle(const QString &title) {
  setStringForV22OrForV24(title, "TT2", "TIT2");
}

void MP3InfoTag::setArtist(const QString &artist) {
  setStringForV22OrForV24(artist, "TP1", "TPE1");
}

void MP3InfoTag::setAlbum(const QString &album) {
  setStringForV22OrForV24(album, "TAL", "TALB");
}

void MP3InfoTag::setTrack(const QString &track) {
  setStringForV22OrForV24(track, "TRK", "TRCK");
}

void MP3InfoTag::setYear(const QString &year) {
  setStringForV22OrForV24(year, "TYE", "TDRC");
}

void MP3InfoTag::setGenres(const QString &genres) {
  setStringForV22OrForV24(genres, "TCO", "TCON");
}

void MP3InfoTag::setBPM(const QString &bpm) {
  setStringForV22OrForV24(bpm, "TBP", "TBPM");
}

void MP3InfoTag::setIsPartOfCompilation(bool compilation) {
  setStringForV22OrForV24(compilation ? u"1"_qs : QString(), "TCP", "TCMP");
}

void MP3InfoTag::setLyrics(const QString &lyrics) {
  const QByteArray id = isVersion22() ? "ULT" : "USLT";
  tagModified = true;
  removeAllObjectsForFrameID(id);
  if (!lyrics.isEmpty()) addObjectForFrameID(TextBlock{u"eng"_qs, {}, lyrics}, id);
}

std::vector<ID3ImagePtr> MP3InfoTag::images() const {
  std::vector<ID3ImagePtr> pictures;
  for (const Frame &frame : mFrames) {
    const auto *image = std::get_if<ID3ImagePtr>(&frame.value);
    if (image && frame.id == frameids::kImage) pictures.push_back(*image);
  }
  return pictures;
}

qint32 MP3InfoTag::numberOfImages() const {
  // The picture of an artwork file is none of the frames yet.
  const qint32 told = mLazy ? mLazyNumberOfImages : qint32(miTunesArtworks.size());
  return told > 0 ? told : qint32(images().size());
}

bool MP3InfoTag::removeImageAtIndex(qsizetype index) {
  if (AudioInfoTag::removeImageAtIndex(index)) return true;
  const std::vector<ID3ImagePtr> pictures = images();
  if (index < 0 || size_t(index) >= pictures.size()) return false;
  const auto isThisOne = [wanted = pictures[size_t(index)]](const Frame &frame) {
    const auto *image = std::get_if<ID3ImagePtr>(&frame.value);
    return image && *image == wanted;
  };
  mFrames.erase(std::find_if(mFrames.begin(), mFrames.end(), isThisOne));
  tagModified = true;
  return true;
}

bool MP3InfoTag::addImage(const ID3ImagePtr &image) {
  if (!image) return false;
  const QByteArray id = frameids::kImage.toByteArray();
  for (const ID3ImagePtr &artwork : std::exchange(miTunesArtworks, {})) addObjectForFrameID(artwork, id);
  addObjectForFrameID(image, id);
  tagModified = true;
  return true;
}

void MP3InfoTag::gatherFileMetadataFromPath(const QString &path) {
  MP3Header header;
  const bool opened = header.openFileWithTag(path, qint32(_id3v2Range.length));
  if (opened) {
    mMetadata = Dictionary::make();
    mMetadata.set(keys::kMDItemAudioBitRate, header.getBitRate());
    mMetadata.set(keys::kMDItemAudioSampleRate, header.getFrequency());
    mMetadata.set(keys::kMDItemDurationSeconds, double(header.getSeconds()));
    if (header.getBitRate() > 0 && header.getFrequency() > 0 && header.getSeconds() > 0) return;
  }
  AudioInfoTag::gatherFileMetadataFromPath(path);
}
