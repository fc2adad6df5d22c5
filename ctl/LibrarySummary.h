#pragma once

#include <array>

#include "app/library/TrackFilter.h"
#include "ctl/OpenedLibrary.h"

/// What there is to say of a library without sorting or comparing its tracks.
struct LibrarySummary {
  QString path;
  std::optional<Date> date;
  /// How many tracks got each verdict.
  std::array<qsizetype, TrackFilter::kVerdictCount> verdicts{};
  qsizetype playlists = 0;
  /// Empty if nothing names it.
  QString mediaFolder;
  /// What named the media folder: the setting's key, "direct access", or the library's key; empty for none.
  QString mediaFolderSource;

  static LibrarySummary of(const OpenedLibrary &library);

  qsizetype kept() const { return verdicts[size_t(TrackFilter::Verdict::Kept)]; }
  qsizetype dropped() const;
  /// Why a verdict drops a track, in a few words.
  static QString reason(TrackFilter::Verdict verdict);

  void printJson(Terminal &terminal) const;
  void print(Terminal &terminal) const;
};
