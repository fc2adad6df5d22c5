#pragma once

#include "tools/demo/LibraryXml.h"
#include "tools/demo/SongTags.h"

/// One entry of a made-up library, and the file behind it.
struct DemoTrack {
  SongTags tags;
  QString kind;
  /// Below the media folder's "Music"; empty for an entry without a file of its own.
  QString path;
  int trackID = 0;
  quint64 persistentID = 0;
  int bitRate = 0, sampleRate = 44100;
  int milliseconds = 0;
  qint64 sizeBytes = 0;
  int playCount = 0, skipCount = 0, rating = 0, artworkCount = 0, bpm = 0;
  Date dateAdded, dateModified, played;
  /// The file is not written: a missing track.
  bool fileIsGone = false;
  bool hasVideo = false, isPodcast = false;
  /// "File", "URL" or "Remote".
  QString trackType = QStringLiteral("File");
  /// The address of an entry whose track type is "URL".
  QString url;

  bool isM4a() const { return path.endsWith(u".m4a") || path.endsWith(u".m4r"); }
};

/// Writes the entry with its number as key, the keys in the order in which iTunes writes them. `musicFolder`
/// is the absolute folder that the paths are below.
void writeTrack(LibraryXml &xml, const DemoTrack &track, const QString &musicFolder);

/// The header of a library file, up to and without the tracks.
void writeLibraryHead(LibraryXml &xml, const QString &mediaFolder, quint64 libraryID);
