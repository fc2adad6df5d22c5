#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "audio/AudioInfoTag.h"
#include "audio/FileReference.h"
#include "values/Date.h"

class FileReader;
class SongFile;
using SongFilePtr = std::unique_ptr<SongFile>;

/// One audio file on disk: its path, a reference that follows the file when it moves, and its tag, built when
/// somebody asks. One thread.
class SongFile {
 public:
  /// Activity: 0 usable, 3 the file is read-only, 4 failed.
  static constexpr qint32 kUsable = 0, kReadOnly = 3, kFailed = 4;
  /// What a file holds by its content.
  static constexpr qint32 kUnknownData = 0, kMPEGData = 1, kMP4Data = 2;

  /// A song file exists only for a real file of at least 255 bytes; null otherwise.
  static SongFilePtr songWithPath(const QString &path);
  SongFile(const SongFile &) = delete;
  /// A new object for the same file, without the tag; null if the file is gone.
  SongFilePtr copy() const;
  /// The last of the files with this path; null if there is none.
  static SongFile *songWithPathInArrayOfSongFiles(const QString &path, const std::vector<SongFile *> &files);

  static bool claimsToBeMP3(const QString &path);
  static bool claimsToBeAAC(const QString &path);
  static bool claimsToBeOGG(const QString &path);
  static bool claimsToBeAIFF(const QString &path);
  /// 0, 1 or 2 as above. Reads at most half a megabyte behind a tag, in blocks of 4 KiB.
  static qint32 songDataTypeAtPath(const QString &path);
  /// The same of an open file; the path is for the log.
  static qint32 songDataTypeOfFile(const FileReader &file, const QString &path);
  /// Cuts off a version 2.4 tag; false for any other file and on failure.
  static bool removeID3v2TagFromFileAtPath(const QString &path);

  /// The tag, built at the first call; null if the file has none that can be read, and then tried again.
  AudioInfoTag *infotag();
  void setInfotag(AudioInfoTagPtr tag);
  void uncacheInfotag();
  bool hasInfotagCached() const { return mInfotag != nullptr; }
  void createInfotagUsingCachedInfoDict(const Dictionary &info);
  bool revertToCachedInfotag();
  void createLazyInfoTagFromDictionaryPath(const Dictionary &track, const QString &path);
  void ensureInfotagIsReal();
  void setDefaultActivityStatus();
  void rememberOriginalValuesForLaterRefresh();
  const Dictionary &originalProperties() const { return mOriginalProperties; }

  const QString &path() const { return mPath; }
  QString filename() const;
  void setPath(const QString &path);
  void setAliasFromPath();
  bool hasAlias() const { return mAlias.has_value(); }
  /// Takes the path where the file is now; a file that cannot be found gives status 4.
  void updatePathFromAlias();
  /// True if the file has changed since its date was adopted; its tag is dropped then.
  bool refresh();
  void adoptCurrentModificationDate();

  /// Writes the held tag into the file without disturbing the file's other attributes. False, and status 4,
  /// with a text for the user (that may be null).
  bool writeToOriginalPathWithErrorRefreshiTunes(QString *error, bool refreshiTunes);
  bool canWriteToOriginalPath() const { return mStatus != kReadOnly && mStatus != kFailed; }

  void setPlayListAndIndex(const QString &playlist, qint64 index);
  const QString &playlist() const { return mPlaylist; }
  qint64 playlistIndex() const { return mPlaylistIndex; }
  const QString &persistentID() const { return mPersistentID; }
  void setPersistentID(const QString &pid) { mPersistentID = pid; }
  qint32 iTunesDBID() const { return miTunesDBID; }
  void setiTunesDBID(qint32 id) { miTunesDBID = id; }
  void flushiTunesDBID() { miTunesDBID = 0; }
  qint32 hasiTunesArtwork() const { return mHasiTunesArtwork; }
  void setHasiTunesArtwork(qint32 known) { mHasiTunesArtwork = known; }
  qint32 activityStatus() const { return mStatus; }
  void setActivityStatus(qint32 status) { mStatus = status; }
  QString description() const;

  // The order of two songs by one value of their tags, which are built if needed: negative, 0 or positive.
  // Unless it says otherwise, smaller values go first and a song without a value behind all others.
  int rawCompareArtist(SongFile &other);
  int rawCompareTitle(SongFile &other);
  int rawCompareAlbum(SongFile &other);
  int rawCompareGenre(SongFile &other);
  int rawCompareReadVersion(SongFile &other);
  int rawCompareTrack(SongFile &other);
  /// A song without a year goes first.
  int rawCompareYear(SongFile &other);
  /// None, fewer than 100 characters, more.
  int rawCompareLyrics(SongFile &other);
  int rawCompareArt(SongFile &other);
  /// The higher status goes first.
  int rawCompareActivity(SongFile &other);
  int rawCompareIndex(SongFile &other);
  int rawCompareBPM(SongFile &other);
  int rawCompareIsCompilation(SongFile &other);
  int rawCompareDuration(SongFile &other);

  // The order of two songs for a list sorted by one column: that value first, then others.
  int compareArtist(SongFile &other);
  int compareTitle(SongFile &other);
  int compareAlbum(SongFile &other);
  int compareTrack(SongFile &other);
  int compareYear(SongFile &other);
  int compareGenre(SongFile &other);
  int compareArt(SongFile &other);
  int compareReadVersion(SongFile &other);
  int compareBPM(SongFile &other);
  int compareDuration(SongFile &other);
  int compareIndex(SongFile &other);
  int compareCompilation(SongFile &other);
  /// Among equals the albums run in reverse.
  int compareLyrics(SongFile &other);
  int compareActivity(SongFile &other);

  /// -1 if a is above b, 1 if it is below, else 0.
  static int compareTo(qint32 a, qint32 b);

 private:
  SongFile() = default;

  QString mPath;
  std::optional<FileReference> mAlias;
  std::optional<Date> mModDate;
  AudioInfoTagPtr mInfotag;
  Dictionary mOriginalProperties;
  bool mIsWritableFile = false;
  qint32 mHasiTunesArtwork = -1;
  qint32 mStatus = kUsable;
  qint32 miTunesDBID = 0;
  QString mPlaylist;
  qint64 mPlaylistIndex = kNotFound;
  QString mPersistentID;
};
