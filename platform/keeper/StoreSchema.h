#pragma once

#include <QString>
#include <array>

/// How Music Keeper's store lies in its file: an SQLite database with a write-ahead log. The keeper writes
/// it; direct access reads it. Persistent IDs stand in it as the signed number with the same 64 bits.
namespace storeSchema {

/// The store's name in its folder.
inline const QString kFileName = QStringLiteral("Music Library.musiclibrary");
/// The exported library beside it.
inline const QString kExportName = QStringLiteral("iTunes Music Library.xml");

/// What `PRAGMA user_version` says of a store of this shape, and `PRAGMA application_id` of any store of
/// ours.
constexpr int kVersion = 1;
constexpr int kApplicationID = 0x544B5031;

/// Track flags (column `flags` of `tracks`).
enum TrackFlag : int {
  kHasFile = 1,
  kIsAddress = 2,
  kIsRemote = 4,
  kCompilation = 8,
  kDisabled = 16,
  kHasVideo = 32,
  kPodcast = 64,
  kLoved = 128,
  kDisliked = 256,
};

/// Playlist flags (column `flags` of `playlists`).
enum PlaylistFlag : int {
  kMaster = 1,
  kFolder = 2,
  kSmart = 4,
  kGenius = 8,
  kGeniusMix = 16,
  kHidden = 32,
  kAllItems = 64,
};

/// A name of the table `facts` that both sides know.
inline const QString kFactRoot = QStringLiteral("root");
inline const QString kFactChangeStamp = QStringLiteral("change stamp");

/// What a store of the present version is made of.
///
/// `keys`: the numbers that records write for keys. `tracks` in the order of `id`, which is never used twice;
/// `database_id` is the library's "Track ID", `member` the name of the track in the library's "Tracks" where
/// that is not its "Track ID". `name` and `artist` are folded for case, `location` is a path. `playlists` in
/// the order of `position`; `parent` is a folder's persistent ID. `entries`: a playlist's tracks in the order
/// of `position`, which may have gaps; `record` holds an item that has more than its "Track ID".
inline const std::array kCreate = {
    QStringLiteral("CREATE TABLE facts (name TEXT PRIMARY KEY, value BLOB) WITHOUT ROWID"),
    QStringLiteral("CREATE TABLE keys (number INTEGER PRIMARY KEY, text TEXT NOT NULL UNIQUE)"),
    QStringLiteral("CREATE TABLE tracks (id INTEGER PRIMARY KEY AUTOINCREMENT, "
                   "persistent_id INTEGER NOT NULL UNIQUE, database_id INTEGER NOT NULL UNIQUE, member TEXT, "
                   "name TEXT, artist TEXT, location TEXT, flags INTEGER NOT NULL, record BLOB NOT NULL)"),
    QStringLiteral("CREATE INDEX tracks_name ON tracks (name, artist)"),
    QStringLiteral("CREATE INDEX tracks_artist ON tracks (artist)"),
    QStringLiteral("CREATE INDEX tracks_flags ON tracks (flags)"),
    QStringLiteral("CREATE INDEX tracks_location ON tracks (location) WHERE location IS NOT NULL"),
    QStringLiteral("CREATE TABLE playlists (id INTEGER PRIMARY KEY AUTOINCREMENT, "
                   "persistent_id INTEGER NOT NULL UNIQUE, position INTEGER NOT NULL, parent INTEGER, "
                   "name TEXT NOT NULL, flags INTEGER NOT NULL, distinguished_kind INTEGER NOT NULL, "
                   "record BLOB NOT NULL)"),
    QStringLiteral("CREATE INDEX playlists_position ON playlists (position)"),
    QStringLiteral("CREATE TABLE entries ("
                   "playlist INTEGER NOT NULL REFERENCES playlists (id) ON DELETE CASCADE, "
                   "position INTEGER NOT NULL, "
                   "track INTEGER NOT NULL REFERENCES tracks (id) ON DELETE CASCADE, "
                   "record BLOB, PRIMARY KEY (playlist, position)) WITHOUT ROWID"),
    QStringLiteral("CREATE INDEX entries_track ON entries (track, playlist)"),
};

/// What a reader asks. The columns stand in the order in which they are named.
inline const QString kReadKeys = QStringLiteral("SELECT number, text FROM keys ORDER BY number");
inline const QString kReadFact = QStringLiteral("SELECT value FROM facts WHERE name = ?");
inline const QString kReadTracks =
    QStringLiteral("SELECT persistent_id, flags, record FROM tracks ORDER BY id");
inline const QString kReadTrack =
    QStringLiteral("SELECT persistent_id, flags, record FROM tracks WHERE persistent_id = ?");
inline const QString kReadPlaylists = QStringLiteral(
    "SELECT id, persistent_id, parent, name, flags, distinguished_kind, record, "
    "(SELECT count(*) FROM entries WHERE playlist = playlists.id) "
    "FROM playlists ORDER BY position");
/// By the playlist's persistent ID; the track's persistent ID and its location as a path.
inline const QString kReadEntries = QStringLiteral(
    "SELECT tracks.persistent_id FROM entries JOIN tracks ON tracks.id = entries.track "
    "WHERE entries.playlist = (SELECT id FROM playlists WHERE persistent_id = ?) "
    "ORDER BY entries.position");
inline const QString kReadEntriesWithLocations = QStringLiteral(
    "SELECT tracks.persistent_id, tracks.location "
    "FROM entries JOIN tracks ON tracks.id = entries.track "
    "WHERE entries.playlist = (SELECT id FROM playlists WHERE persistent_id = ?) "
    "ORDER BY entries.position");

}  // namespace storeSchema
