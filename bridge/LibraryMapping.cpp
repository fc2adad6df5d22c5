#include "bridge/LibraryMapping.h"

#include <cmath>
#include <limits>

#include "values/Keys.h"
#include "values/PersistentID.h"

namespace {

/// The entries of a dictionary in the making.
class Entries {
 public:
  void add(Key key, const QString &text) {
    if (!text.isNull()) entries.push_back({key, text});
  }
  void add(Key key, const std::optional<Date> &date) {
    if (date) entries.push_back({key, *date});
  }
  void addNumber(Key key, quint64 number) {
    constexpr quint64 kLargest = std::numeric_limits<qint64>::max();
    if (number) entries.push_back({key, qint64(qMin(number, kLargest))});
  }
  void addIf(bool holds, Key key) {
    if (holds) entries.push_back({key, true});
  }
  void addAlways(Key key, Value value) { entries.push_back({key, std::move(value)}); }

  /// The dictionary with no more room than it needs; the next one starts empty.
  Dictionary take() {
    const Dictionary made = Dictionary::make();
    made.takeEntries(entries);
    entries.clear();
    return made;
  }

 private:
  std::vector<DictionaryEntry> entries;
};

const QString &trackTypeOf(LibraryMediaItem::LocationType type) {
  static const QString names[] = {QStringLiteral("Unknown"), QStringLiteral("File"), QStringLiteral("URL"),
                                  QStringLiteral("Remote")};
  return names[type >= LibraryMediaItem::LocationType::File ? int(type) : 0];
}

void addAlbum(Entries &entries, const LibraryMediaItem &item) {
  entries.add(keys::Album, item.albumTitle);
  entries.add(keys::SortAlbum, item.albumSortTitle);
  entries.add(keys::AlbumArtist, item.albumArtist);
  entries.add(keys::SortAlbumArtist, item.albumSortAlbumArtist);
  entries.addNumber(keys::TrackCount, item.albumTrackCount);
  entries.addNumber(keys::DiscNumber, item.albumDiscNumber);
  entries.addNumber(keys::DiscCount, item.albumDiscCount);
  entries.addIf(item.albumIsCompilation, keys::Compilation);
}

void addDates(Entries &entries, const LibraryMediaItem &item) {
  entries.add(keys::DateAdded, item.addedDate);
  entries.add(keys::DateModified, item.modifiedDate);
  entries.add(keys::ReleaseDate, item.releaseDate);
  entries.add(keys::SkipDate, item.skipDate);
  entries.add(keys::PlayDateUTC, item.lastPlayedDate);
  if (!item.lastPlayedDate) return;
  const qint64 seconds = qint64(std::trunc(item.lastPlayedDate->seconds));
  if (seconds) entries.addAlways(keys::PlayDate, seconds);
}

void addNumbers(Entries &entries, const LibraryMediaItem &item) {
  entries.addNumber(keys::TotalTime, item.totalTime);
  entries.addNumber(keys::Year, item.year);
  entries.addNumber(keys::TrackNumber, item.trackNumber);
  entries.addNumber(keys::BitRate, item.bitrate);
  entries.addNumber(keys::SampleRate, item.sampleRate);
  entries.addNumber(keys::PlayCount, item.playCount);
  if (item.rating) entries.addAlways(keys::Rating, item.rating);
  entries.addIf(item.isVideo, keys::HasVideo);
}

}  // namespace

namespace iTunesLibInterface {

Dictionary dictionaryOfMediaItem(const LibraryMediaItem &item) {
  static thread_local Entries entries;
  // The text is the one that "Tracks" holds the track under.
  entries.addAlways(keys::PersistentID, Key(hexPersistentID(item.persistentID)).text());
  entries.add(keys::Artist, item.artistName);
  entries.add(keys::SortArtist, item.artistSortName);
  addAlbum(entries, item);
  entries.add(keys::Name, item.title);
  entries.add(keys::SortName, item.sortTitle);
  entries.add(keys::Composer, item.composer);
  entries.add(keys::SortComposer, item.sortComposer);
  entries.add(keys::Genre, item.genre);
  entries.add(keys::Kind, item.kind);
  entries.add(keys::Comments, item.comments);
  entries.add(keys::ContentRating, item.contentRating);
  addDates(entries, item);
  entries.addAlways(keys::TrackType, trackTypeOf(item.locationType));
  addNumbers(entries, item);
  if (item.locationType == LibraryMediaItem::LocationType::File) {
    if (item.location.startsWith(u"file:")) entries.add(keys::Location, item.location);
    entries.addAlways(keys::Size, qint64(item.fileSize));
  }
  return entries.take();
}

Dictionary dictionaryOfPlaylist(const LibraryPlaylist &playlist) {
  Entries entries;
  entries.addAlways(keys::PlaylistPersistentID, hexPersistentID(playlist.persistentID));
  entries.add(keys::Name, playlist.name);
  if (playlist.parentID) entries.addAlways(keys::ParentPersistentID, hexPersistentID(*playlist.parentID));
  if (playlist.distinguishedKind) entries.addAlways(keys::DistinguishedKind, playlist.distinguishedKind);
  entries.addIf(playlist.kind == LibraryPlaylist::Kind::Folder, keys::Folder);
  entries.addIf(playlist.kind == LibraryPlaylist::Kind::Smart, keys::SmartInfo);
  entries.addIf(playlist.kind == LibraryPlaylist::Kind::Genius, keys::Genius);
  entries.addIf(playlist.kind == LibraryPlaylist::Kind::GeniusMix, keys::GeniusMix);
  if (!playlist.isVisible) entries.addAlways(keys::Visible, false);
  entries.addIf(playlist.isAllItemsPlaylist, keys::AllItems);
  entries.addIf(playlist.isMaster, keys::Master);
  return entries.take();
}

Dictionary PlaylistItemMaker::dictionaryOfItem(const LibraryPlaylistItem &item) {
  Dictionary &pattern = patterns[item.persistentID];
  if (pattern.isNull()) {
    Entries entries;
    entries.addAlways(keys::TrackPersistentID, Key(hexPersistentID(item.persistentID)).text());
    pattern = entries.take();
  }
  const Dictionary made = pattern.copyMembers(true);
  if (item.location.startsWith(u"file:")) made.set(keys::Location, item.location);
  return made;
}

}  // namespace iTunesLibInterface
