#include <benchmark/benchmark.h>

#include "app/state/AppState.h"
#include "bench/BenchPlatform.h"
#include "scanners/DuplicateScanner.h"
#include "support/Preferences.h"
#include "tests/fixtures/ScriptedView.h"
#include "text/Simplified.h"
#include "values/Keys.h"

namespace {

/// Tracks as a load leaves them: `perArtist` songs for each artist, every tenth song there twice.
Array library(int count, int perArtist) {
  const Array tracks = Array::make();
  QString artist, key;
  for (int number = 0; number < count; ++number) {
    if (number % perArtist == 0) {
      artist = QStringLiteral("The Artist Number %1").arg(number / perArtist);
      key = simplified(artist);
    }
    const int song = number % 10 == 9 ? number - 1 : number;
    const Dictionary track = Dictionary::make();
    track.set(keys::TrackID, number);
    track.set(keys::Name, QStringLiteral("Song of the Year %1, Part Two").arg(song));
    track.set(keys::Artist, artist);
    for (const Key filler : {keys::Album, keys::Genre, keys::Composer, keys::Comments, keys::Grouping}) {
      track.set(filler, artist);
    }
    track.set(keys::Kind, QStringLiteral("MPEG audio file"));
    track.set(keys::TotalTime, 120000 + int(quint32(song) * 2654435761U % 240000));
    for (const Key filler : {keys::Size, keys::TrackNumber, keys::TrackCount, keys::Year, keys::BitRate,
                             keys::SampleRate, keys::PlayCount, keys::Rating, keys::DiscNumber}) {
      track.set(filler, number);
    }
    track.set(keys::PersistentID, QStringLiteral("%1").arg(number, 16, 16, QLatin1Char('0')));
    track.set(keys::Location, QStringLiteral("file:///music/%1.mp3").arg(number));
    track.set(keys::simplifiedArtist, key);
    track.set(keys::Path, QStringLiteral("/music/%1.mp3").arg(number));
    tracks.append(track);
  }
  return tracks;
}

void duplicateScan(benchmark::State &bench) {
  startBenchPlatform();
  prefs::set(prefs::allowedDurationVariation, 10);
  prefs::set(prefs::ignoreDurationMinimum, 30);
  ScriptedView view;
  AppState state(view);
  state.library.mMusicLibrarySortedTracks = library(int(bench.range(0)), int(bench.range(1)));
  DuplicateScanner scanner(state);
  scanner.setFileExists([](const QString &) { return true; });
  const qint64 before = peakKilobytes();
  for (auto round : bench) {
    bench.PauseTiming();
    state.lists.mDuplicateSongDicts = Array::make();
    bench.ResumeTiming();
    state.operation.mNumberOfScannedPaths = 0;
    scanner.scanLibraryForDuplicatesThread();
  }
  bench.SetItemsProcessed(bench.iterations() * bench.range(0));
  bench.counters["rows"] = double(state.lists.mDuplicateSongDicts.size());
  bench.counters["peakBytesPerTrack"] = double(peakKilobytes() - before) * 1024.0 / double(bench.range(0));
}

BENCHMARK(duplicateScan)
    ->ArgNames({"tracks", "perArtist"})
    ->Args({100000, 30})
    ->Args({300000, 30})
    ->Args({300000, 100000})
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
