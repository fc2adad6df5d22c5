#pragma once

#include <QString>
#include <QStringList>
#include <optional>

/// The pictures of tracks, asked of the music application itself. Untimed; any thread.
namespace iTunesInterface {

/// How many pictures each of the tracks has, as texts in the order of their persistent IDs; "-1" for an
/// unknown track. Nothing if not every track was answered for.
std::optional<QStringList> artworkCountsForPIDs(const QStringList &pids);

/// How many pictures a track has: the one of the database's number, or else of the title and path. -1, as
/// text, if nobody answers.
QString artworkCountForDBIDTitlePath(qint32 id, const QString &title, const QString &path);

/// Removes all pictures of a track, named as above: how many there were; nothing if nobody answers.
std::optional<QString> removeAllArtworkFromSongWithDBIDTitlePath(qint32 id, const QString &title,
                                                                 const QString &path);

/// Has the application write its picture of a track into the track's file. False if it has none.
bool embedArtworkForTitlePath(const QString &title, const QString &path);

}  // namespace iTunesInterface
