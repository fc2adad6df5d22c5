#include "tools/demo/DemoTrack.h"

#include "tools/demo/DemoKeys.h"

namespace {

// "Play Date" counts seconds from the start of 1904.
constexpr double kSecondsFrom1904 = 3061152000.0;

void writeText(LibraryXml &xml, Key key, const QString &text) {
  if (!text.isEmpty()) xml.text(key, text);
}

void writeCount(LibraryXml &xml, Key key, qint64 count) {
  if (count != 0) xml.integer(key, count);
}

void writeNames(LibraryXml &xml, const DemoTrack &track) {
  writeText(xml, keys::Name, track.tags.name);
  writeText(xml, keys::Artist, track.tags.artist);
  writeText(xml, keys::AlbumArtist, track.tags.albumArtist);
  writeText(xml, keys::Composer, track.tags.composer);
  writeText(xml, keys::Album, track.tags.album);
  writeText(xml, keys::Genre, track.tags.genre);
  xml.text(keys::Kind, track.kind);
}

void writeFacts(LibraryXml &xml, const DemoTrack &track) {
  writeCount(xml, keys::Size, track.sizeBytes);
  writeCount(xml, keys::TotalTime, track.milliseconds);
  writeCount(xml, keys::DiscNumber, track.tags.disc);
  writeCount(xml, keys::DiscCount, track.tags.discCount);
  writeCount(xml, keys::TrackNumber, track.tags.track);
  writeCount(xml, keys::TrackCount, track.tags.trackCount);
  writeCount(xml, keys::Year, track.tags.year);
  writeCount(xml, keys::BPM, track.bpm);
  xml.date(keys::DateModified, track.dateModified);
  xml.date(keys::DateAdded, track.dateAdded);
  if (track.bitRate != 0) {
    xml.integer(keys::BitRate, track.bitRate);
    xml.integer(keys::SampleRate, track.sampleRate);
  }
  writeText(xml, keys::Comments, track.tags.comments);
}

void writeHistory(LibraryXml &xml, const DemoTrack &track) {
  if (track.playCount != 0) {
    xml.integer(keys::PlayCount, track.playCount);
    xml.integer(keys::PlayDate, qint64(track.played.seconds + kSecondsFrom1904));
    xml.date(keys::PlayDateUTC, track.played);
  }
  if (track.skipCount != 0) {
    xml.integer(demoKeys::SkipCount, track.skipCount);
    xml.date(keys::SkipDate, track.played);
  }
  if (track.rating != 0) {
    xml.integer(keys::Rating, track.rating);
    xml.integer(keys::AlbumRating, track.rating);
    xml.boolean(demoKeys::AlbumRatingComputed, true);
  }
  if (track.tags.compilation) xml.boolean(keys::Compilation, true);
  writeCount(xml, keys::ArtworkCount, track.artworkCount);
}

}  // namespace

void writeTrack(LibraryXml &xml, const DemoTrack &track, const QString &musicFolder) {
  xml.beginNumberedDictionary(track.trackID);
  xml.integer(keys::TrackID, track.trackID);
  writeNames(xml, track);
  writeFacts(xml, track);
  writeHistory(xml, track);
  xml.plain(keys::PersistentID, persistentID(track.persistentID));
  xml.text(keys::TrackType, track.trackType);
  if (track.isPodcast) xml.boolean(demoKeys::Podcast, true);
  if (track.hasVideo) xml.boolean(keys::HasVideo, true);
  if (!track.path.isEmpty()) {
    xml.text(keys::Location, fileAddress(musicFolder + u'/' + track.path));
    xml.integer(demoKeys::FileFolderCount, 5);
    xml.integer(demoKeys::LibraryFolderCount, 1);
  } else if (!track.url.isEmpty()) {
    xml.text(keys::Location, track.url);
  }
  xml.end();
}

void writeLibraryHead(LibraryXml &xml, const QString &mediaFolder, quint64 libraryID) {
  xml.begin();
  xml.integer(demoKeys::MajorVersion, 1);
  xml.integer(demoKeys::MinorVersion, 1);
  xml.date(demoKeys::LibraryDate, Date::fromCivil(2012, 3, 4, 5, 6, 7));
  xml.plain(demoKeys::ApplicationVersion, "10.7");
  xml.integer(demoKeys::Features, 5);
  xml.boolean(demoKeys::ShowContentRatings, true);
  xml.text(keys::MusicFolder, fileAddress(mediaFolder + u'/'));
  xml.plain(keys::LibraryPersistentID, persistentID(libraryID));
}
