#include <benchmark/benchmark.h>

#include <QSet>
#include <ctime>
#include <random>

#include "app/state/AppState.h"
#include "bench/BenchPlatform.h"
#include "scanners/InconNameController.h"
#include "scanners/InconsistentNameScanner.h"
#include "support/Preferences.h"
#include "tests/fixtures/ScriptedView.h"
#include "text/Simplified.h"
#include "values/Keys.h"

namespace {

enum Kind { Usual, OneArtist, AllArtists, ManySpellings };
constexpr const char *kKindNames[] = {"usual", "one artist", "all artists distinct", "one artist, respelled"};

constexpr const char16_t *kWords[] = {
    u"Amber",   u"Broken", u"Candle",  u"Distant", u"Evening", u"Faded",  u"Golden",  u"Harbor",
    u"Knights", u"Jasper", u"Kites",   u"Lantern", u"Mirror",  u"Night",  u"Orchard", u"Phantoms",
    u"Quiet",   u"River",  u"Thunder", u"Ümläut",  u"Valley",  u"Winter", u"of the",  u"Sigur Rós"};

/// Makes tracks as a load leaves them, sorted by artist and album as far as the scan is concerned.
class SampleTracks {
 public:
  explicit SampleTracks(Kind ofKind) : kind(ofKind) {}
  Array make(int count);

 private:
  QString words(int count) {
    QString text;
    for (int word = 0; word < count; ++word) {
      if (word) text += u' ';
      text += QString::fromUtf16(kWords[random() % std::size(kWords)]);
    }
    return text;
  }
  void newArtist(int number);
  Dictionary track(int number);

  const Kind kind;
  std::mt19937 random{20210501};
  QString artist, album, key;
};

void SampleTracks::newArtist(int number) {
  switch (kind) {
    case Usual:
      artist = QStringLiteral("The ") + words(3 + int(random() % 2));
      break;
    case OneArtist:
      artist = QStringLiteral("Various Artists");
      break;
    case AllArtists:
      artist = words(2) + u' ' + QString::number(number);
      break;
    case ManySpellings:
      artist = QStringLiteral("Various") + QString(number % 1000, u' ') + QStringLiteral("Artists");
      break;
  }
  key = simplified(artist);
}

Dictionary SampleTracks::track(int number) {
  const Dictionary made = Dictionary::make();
  made.set(keys::TrackID, number);
  made.set(keys::Name, words(3));
  // A few tracks have their own way to write things.
  made.set(keys::Artist, kind == Usual && random() % 400 == 0 ? artist.toUpper() : artist);
  made.set(keys::AlbumArtist, artist);
  made.set(keys::Album, random() % 400 == 0 ? album.toUpper() : album);
  for (const Key text : {keys::Genre, keys::Composer, keys::Kind, keys::SortArtist, keys::TrackType}) {
    made.set(text, artist);
  }
  for (const Key whole : {keys::Size, keys::TotalTime, keys::TrackNumber, keys::TrackCount, keys::DiscNumber,
                          keys::DiscCount, keys::Year, keys::BitRate, keys::SampleRate, keys::PlayCount,
                          keys::PlayDate, keys::Rating, keys::ArtworkCount, keys::BPM}) {
    made.set(whole, number);
  }
  made.set(keys::PersistentID, QStringLiteral("%1").arg(number, 16, 16, QLatin1Char('0')));
  made.set(keys::Location, QStringLiteral("file:///music/%1.mp3").arg(number));
  made.set(keys::simplifiedArtist, key);
  made.set(keys::Path, QStringLiteral("/music/%1.mp3").arg(number));
  return made;
}

Array SampleTracks::make(int count) {
  const Array tracks = Array::make();
  for (int number = 0; number < count; ++number) {
    if (number % (kind == Usual ? 22 : 1) == 0) newArtist(number);
    if (number % 11 == 0) album = words(3);
    tracks.append(track(number));
  }
  return tracks;
}

/// Processor time: the machine may be at work for others.
double processorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return double(time.tv_sec) + double(time.tv_nsec) / 1.0e9;
}

/// Seconds to compute the key of each distinct name of a library once, and the names.
double secondsOfKeys(const Array &tracks, const NameKeyMethod &method, double &names) {
  QSet<QString> distinct;
  for (const Value &value : tracks) {
    const Dictionary &track = value.toDictionary();
    if (!track.contains(method.artistKey)) distinct.insert(track.value(keys::Artist).toText());
    distinct.insert(track.value(keys::AlbumArtist).toText());
    distinct.insert(track.value(keys::Album).toText());
  }
  names = double(distinct.size());
  const double begin = processorSeconds();
  for (const QString &name : distinct) benchmark::DoNotOptimize(method.keyOf(name));
  return processorSeconds() - begin;
}

/// One scan, beside the time that the distinct keys alone take in the same run.
void namesScan(benchmark::State &bench) {
  startBenchPlatform();
  const auto kind = Kind(bench.range(1));
  prefs::set(prefs::inconsistentMatchMethod, int(bench.range(2)));
  ScriptedView view;
  AppState state(view);
  InconNameController names;
  const Array tracks = SampleTracks(kind).make(int(bench.range(0)));
  state.library.mMusicLibrarySortedTracks = tracks;
  InconsistentNameScanner scanner(state, names);
  const qint64 before = peakKilobytes();
  double scanSeconds = 0.0;
  for (auto round : bench) {
    state.lists.mInconsistentNameDicts = Array::make();
    const double begin = processorSeconds();
    scanner.scanLibraryForInconsistentNamesThread();
    scanSeconds += processorSeconds() - begin;
  }
  const double growth = double(peakKilobytes() - before) * 1024.0;
  double songs = 0.0, distinct = 0.0;
  for (const Value &row : state.lists.mInconsistentNameDicts) {
    songs += double(row.toDictionary().value(keys::inconSongs).toArray().size());
  }
  const double keySeconds = secondsOfKeys(tracks, NameKeyMethod::fromPreferences(), distinct);
  bench.SetLabel(std::string(kKindNames[kind]) + (bench.range(2) == 1 ? ", by sound" : ", by spelling"));
  bench.counters["rows"] = double(state.lists.mInconsistentNameDicts.size());
  bench.counters["songsInRows"] = songs;
  bench.counters["names"] = distinct;
  bench.counters["keySeconds"] = keySeconds;
  bench.counters["beyondKeysSeconds"] = scanSeconds / double(bench.iterations()) - keySeconds;
  bench.counters["addedBytesPerTrack"] = growth / double(bench.range(0));
}

// Each case first in its process (--benchmark_filter) for the added memory: a peak is never taken back.
BENCHMARK(namesScan)
    ->ArgNames({"tracks", "kind", "sound"})
    ->ArgsProduct({{300000}, {Usual, OneArtist, AllArtists, ManySpellings}, {0, 1}})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
