#pragma once

#include <QByteArray>
#include <QString>

/// What the writers of song files put into the tags. Empty texts and zeros are left out.
struct SongTags {
  QString name;
  QString artist;
  QString albumArtist;
  QString album;
  QString composer;
  QString genre;
  QString comments;
  int year = 0;
  int track = 0, trackCount = 0;
  int disc = 0, discCount = 0;
  bool compilation = false;
  /// A PNG picture, or no bytes.
  QByteArray artwork;
};

/// The bytes of a song file with what a library tells of it.
struct SongFileBytes {
  QByteArray bytes;
  int milliseconds = 0;
  int bitRate = 0;
  int sampleRate = 0;
};
