#pragma once

#include <QString>

/// What the music application plays. Any thread.
namespace iTunesInterface {

/// The file of the track that is playing; null if none plays, or nobody answers within a second.
QString pathOfCurrentlyPlayingTrack();

/// Nothing happens if the application does not run.
void pausePlaying();
void resumePlaying();

/// Plays the track at a path. Starts the application first if it does not run, which takes 2 seconds. False
/// if it does not play.
bool playTrackAtPath(const QString &path);

/// Plays a track by its place in a playlist, if the place is not 0 and the playlist not null and the names
/// are right, else by its names alone. Otherwise as above.
bool playTrackNamedByArtistIndexOfPlaylist(const QString &title, const QString &artist, qint32 index,
                                           const QString &playlist);

}  // namespace iTunesInterface
