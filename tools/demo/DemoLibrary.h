#pragma once

#include <QString>

/// What a maker of libraries reports. Counts are what a load and a scan with the settings that the
/// application comes with must find.
struct DemoSummary {
  QString libraryFile;
  int tracks = 0, droppedTracks = 0;
  int duplicateGroups = 0, duplicateRows = 0;
  /// Artists and albums that are spelled in several ways.
  int inconsistentArtists = 0, inconsistentAlbums = 0;
  int missingTracks = 0, orphans = 0;
  int playlists = 0, songFiles = 0;
  /// What went wrong, with the file's path; empty when all is written.
  QString error;
};

/// The library file and the media folder of a home folder.
QString libraryFolderOf(const QString &home);
QString libraryFileOf(const QString &home);
QString mediaFolderOf(const QString &home);

/// Makes the demo library below `home`: the library file "Music/iTunes/iTunes Music Library.xml" and real
/// song files in "Music/iTunes/iTunes Media/Music". The same seed and home give the same bytes. Files that
/// are there already are overwritten, others are left alone. Stops at the first file that cannot be written.
DemoSummary makeDemoLibrary(const QString &home, quint64 seed);
