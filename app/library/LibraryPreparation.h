#pragma once

#include <QHash>
#include <QString>
#include <array>
#include <vector>

#include "app/library/TrackFilter.h"
#include "values/Value.h"

/// What a load makes of a library's dictionary.
struct PreparedLibrary {
  /// The kept tracks, sorted; the dictionaries of "Tracks" themselves.
  Array sortedTracks;
  /// The path of each kept track that has one, in the file's order.
  std::vector<QString> paths;
  /// How many tracks got each verdict.
  std::array<qsizetype, TrackFilter::kVerdictCount> verdicts{};
};

/// Drops the tracks that are no songs from "Tracks" of `library`, gives the others "simplifiedArtist",
/// "simplifiedAlbum" and "Path", and sorts them by "Artist", "Album" and "Track Number", ties in the file's
/// order. `overridePaths` replaces paths; `volumePrefix` ("/Volumes/NAME/" or empty) goes in front of paths
/// without one. One thread; each distinct name is simplified once.
PreparedLibrary prepareLibrary(const Dictionary &library, TrackFilter &filter,
                               const QHash<QString, QString> &overridePaths, const QString &volumePrefix);
