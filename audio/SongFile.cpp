#include "audio/SongFile.h"

#include <QFileInfo>

#include "audio/FileReader.h"
#include "audio/SongFileInfoCache.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "values/Keys.h"

namespace {

constexpr qint64 kSmallestSong = 255;

}  // namespace

SongFilePtr SongFile::songWithPath(const QString &path) {
  const FileFacts &facts = *platform().fileFacts;
  const std::optional<Date> date = facts.modificationDate(path);
  if (!date || facts.fileSize(path).value_or(0) < kSmallestSong) return {};
  SongFilePtr song(new SongFile);
  song->mPath = path;
  song->mModDate = date;
  song->mIsWritableFile = QFileInfo(path).isWritable();
  song->setDefaultActivityStatus();
  return song;
}

SongFilePtr SongFile::copy() const {
  SongFilePtr song = songWithPath(mPath);
  if (!song) return {};
  song->mStatus = mStatus;
  song->miTunesDBID = miTunesDBID;
  song->mPersistentID = mPersistentID;
  song->mPlaylist = mPlaylist;
  song->mPlaylistIndex = mPlaylistIndex;
  return song;
}

SongFile *SongFile::songWithPathInArrayOfSongFiles(const QString &path,
                                                   const std::vector<SongFile *> &files) {
  if (path.isNull()) return nullptr;
  const auto found = std::find_if(files.rbegin(), files.rend(),
                                  [&path](const SongFile *file) { return file->mPath == path; });
  return found == files.rend() ? nullptr : *found;
}

AudioInfoTag *SongFile::infotag() {
  if (mInfotag) return mInfotag.get();
  mInfotag = AudioInfoTag::tagWithPath(mPath);
  if (mInfotag && !mPlaylist.isNull()) mInfotag->setPlayListAndIndex(mPlaylist, mPlaylistIndex);
  setDefaultActivityStatus();
  return mInfotag.get();
}

void SongFile::setInfotag(AudioInfoTagPtr tag) {
  mInfotag = std::move(tag);
}

void SongFile::uncacheInfotag() {
  mInfotag.reset();
}

void SongFile::createInfotagUsingCachedInfoDict(const Dictionary &info) {
  mInfotag = AudioInfoTag::tagWithCachedInfo(info);
  setDefaultActivityStatus();
}

bool SongFile::revertToCachedInfotag() {
  if (mPath.isEmpty()) return false;
  const Dictionary info = SongFileInfoCache::sharedCache().infoForSongFileAtPath(mPath);
  if (info.isNull()) return false;
  uncacheInfotag();
  createInfotagUsingCachedInfoDict(info);
  return true;
}

void SongFile::createLazyInfoTagFromDictionaryPath(const Dictionary &track, const QString &path) {
  mInfotag = AudioInfoTag::tagWithiTunesTrackInfoPath(track, path);
  setDefaultActivityStatus();
}

void SongFile::ensureInfotagIsReal() {
  const AudioInfoTag *tag = infotag();
  if (tag && tag->isLazy()) uncacheInfotag();
}

void SongFile::setDefaultActivityStatus() {
  if (mInfotag && mInfotag->encounteredProblemDecoding()) {
    mStatus = kFailed;
  } else {
    mStatus = mIsWritableFile ? kUsable : kReadOnly;
  }
}

void SongFile::rememberOriginalValuesForLaterRefresh() {
  mOriginalProperties = Dictionary::make();
  const AudioInfoTag *tag = infotag();
  if (tag && !tag->title().isNull()) mOriginalProperties.set(keys::OriginalTitle, tag->title());
  if (tag && !tag->artist().isNull()) mOriginalProperties.set(keys::Artist, tag->artist());
}

QString SongFile::filename() const {
  return mPath.mid(mPath.lastIndexOf(u'/') + 1);
}

void SongFile::setPath(const QString &path) {
  if (path == mPath) return;
  mPath = path;
  mAlias.reset();
}

void SongFile::setAliasFromPath() {
  if (mAlias) return;
  const FileReference reference = FileReference::toPath(mPath);
  if (!reference.isNull()) mAlias = reference;
}

void SongFile::updatePathFromAlias() {
  if (!mAlias) return;
  const QString found = mAlias->resolve();
  if (found.isNull()) {
    mStatus = kFailed;
  } else {
    mPath = found;
  }
}

bool SongFile::refresh() {
  updatePathFromAlias();
  if (mPath.isNull()) return false;
  const std::optional<Date> date = platform().fileFacts->modificationDate(mPath);
  if (!date) {
    mStatus = kFailed;
    return false;
  }
  if (mModDate && date->seconds == mModDate->seconds) return false;
  mModDate = date;
  uncacheInfotag();
  mHasiTunesArtwork = -1;
  return true;
}

void SongFile::adoptCurrentModificationDate() {
  const std::optional<Date> date = platform().fileFacts->modificationDate(mPath);
  if (date) mModDate = date;
}

bool SongFile::writeToOriginalPathWithErrorRefreshiTunes(QString *error, bool refreshiTunes) {
  if (mPath.isNull()) return true;
  setAliasFromPath();
  if (!mInfotag) {
    mStatus = kFailed;
    return false;
  }
  const bool isPlaying = iTunesInterface::pathOfCurrentlyPlayingTrack() == mPath;
  if (isPlaying) iTunesInterface::pausePlaying();
  // The writers change the file where it stands, so that it keeps its attributes.
  const bool written = mInfotag->modifySongFileAtPathError(mPath, error);
  if (written) {
    if (refreshiTunes && !mPersistentID.isNull()) {
      const std::optional<QString> path = iTunesInterface::refreshAndGetPathOfSongWithPID(mPersistentID);
      if (path && !path->startsWith(u"error")) setPath(*path);
    }
    if (!QFileInfo::exists(mPath)) updatePathFromAlias();
    adoptCurrentModificationDate();
  } else {
    mStatus = kFailed;
  }
  if (isPlaying) iTunesInterface::resumePlaying();
  return written;
}

void SongFile::setPlayListAndIndex(const QString &playlist, qint64 index) {
  mPlaylist = playlist;
  mPlaylistIndex = index;
  if (mInfotag) mInfotag->setPlayListAndIndex(playlist, index);
}

QString SongFile::description() const {
  return QStringLiteral("<SongFile 0x%1: %2>").arg(quintptr(this), 0, 16).arg(filename());
}
