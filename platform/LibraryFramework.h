#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>
#include <set>
#include <vector>

#include "values/Date.h"

/// One track as the music application's library knows it. Absent texts are null, absent numbers 0.
struct LibraryMediaItem {
  enum class LocationType { Unknown = 0, File = 1, Url = 2, Remote = 3 };

  quint64 persistentID = 0;
  QString artistName, artistSortName;
  QString albumTitle, albumSortTitle, albumArtist, albumSortAlbumArtist;
  quint32 albumTrackCount = 0, albumDiscNumber = 0, albumDiscCount = 0;
  bool albumIsCompilation = false;
  QString title, sortTitle, composer, sortComposer, genre, kind, comments, contentRating;
  std::optional<Date> addedDate, modifiedDate, releaseDate, lastPlayedDate, skipDate;
  LocationType locationType = LocationType::Unknown;
  /// A "file:" address as a rule; null where there is none.
  QString location;
  /// Milliseconds.
  quint64 totalTime = 0;
  quint32 year = 0, trackNumber = 0;
  /// Kilobits per second, and hertz.
  quint32 bitrate = 0, sampleRate = 0;
  quint32 playCount = 0, skipCount = 0;
  /// 0 to 100.
  qint32 rating = 0;
  bool isVideo = false;
  /// Bytes.
  quint64 fileSize = 0;
};

/// One playlist, without its items.
struct LibraryPlaylist {
  enum class Kind { Regular = 0, Smart = 1, Genius = 2, Folder = 3, GeniusMix = 4 };

  quint64 persistentID = 0;
  QString name;
  std::optional<quint64> parentID;
  /// 0 for the user's own.
  qint64 distinguishedKind = 0;
  Kind kind = Kind::Regular;
  bool isVisible = true;
  bool isAllItemsPlaylist = false;
  bool isMaster = false;
  /// How many items it holds.
  qint64 itemCount = 0;
};

/// One entry of a playlist.
struct LibraryPlaylistItem {
  quint64 persistentID = 0;
  /// As in `LibraryMediaItem`.
  QString location;
};

/// The music application's library, read without the application's help and never written. What it says is as
/// fresh as the last `reloadData`, or fresher. Any thread, several at once. Nothing throws; a read that
/// breaks off says so, and what it gave until then is no library.
class LibraryFramework {
 public:
  virtual ~LibraryFramework() = default;
  /// Finds the library; asked for once, before all else. An empty answer means that there is one, which may
  /// still be empty and fill at `reloadData`; else the text says why there can be none.
  virtual QString open() = 0;
  /// Takes in what the application has changed.
  virtual void reloadData() = 0;
  /// The moment up to which the library's file holds all that the application has acknowledged; nothing where
  /// the file's modification date has to tell.
  virtual std::optional<Date> savedUntil() { return std::nullopt; }

  /// From one to the other all that the calling thread reads is of one moment, where the library can do that.
  /// Once at a time; see `LibrarySnapshot`.
  virtual void beginSnapshot() {}
  virtual void endSnapshot() {}

  /// Why a library that is there cannot be read, or why the calling thread's last read broke off, in one
  /// line; empty if all is well, or if there is none.
  virtual QString problem() { return {}; }

  /// How many tracks the library has.
  virtual qsizetype mediaItemCount() = 0;
  /// Shows each track in turn until `visit` answers false. The item is valid during the call only. False if
  /// the tracks could not be read to their end.
  [[nodiscard]] virtual bool visitMediaItems(const std::function<bool(const LibraryMediaItem &)> &visit) = 0;
  /// One track; nothing if it is unknown or cannot be read.
  virtual std::optional<LibraryMediaItem> mediaItem(quint64 persistentID) = 0;
  /// All playlists, in the library's order; nothing if they cannot be read.
  virtual std::optional<std::vector<LibraryPlaylist>> allPlaylists() = 0;
  /// The playlists that a track is in; nothing if they cannot be read.
  virtual std::optional<std::set<quint64>> playlistsContaining(quint64 trackID) = 0;
  /// Shows the entries of a playlist in their order, with locations only if asked for, until `visit` answers
  /// false. False if they could not be read to their end.
  [[nodiscard]] virtual bool visitItems(quint64 playlistID, bool withLocations,
                                        const std::function<bool(const LibraryPlaylistItem &)> &visit) = 0;

  /// "file:" addresses of the folder of the media and of the folder that holds the library; nothing where the
  /// library does not say.
  virtual std::optional<QString> mediaFolderLocation() = 0;
  virtual std::optional<QString> musicFolderLocation() = 0;

  /// True if the track has a picture; nothing if it cannot be read.
  virtual std::optional<bool> hasArtworkAvailable(quint64 persistentID) = 0;
  /// The bytes of the track's first picture; none if it has none.
  virtual QByteArray artwork(quint64 persistentID) = 0;
};

/// While it lives, its thread sees one state of a library, whatever the application changes.
class LibrarySnapshot {
 public:
  explicit LibrarySnapshot(LibraryFramework &of) : library(of) { library.beginSnapshot(); }
  ~LibrarySnapshot() { library.endSnapshot(); }
  LibrarySnapshot(const LibrarySnapshot &) = delete;
  LibrarySnapshot &operator=(const LibrarySnapshot &) = delete;

 private:
  LibraryFramework &library;
};
