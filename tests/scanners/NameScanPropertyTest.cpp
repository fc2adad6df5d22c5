#include <random>

#include "app/state/AppState.h"
#include "scanners/InconNameController.h"
#include "scanners/InconsistentNameFinder.h"
#include "scanners/InconsistentNameScanner.h"
#include "scanners/ScanThread.h"
#include "support/Copy.h"
#include "support/Format.h"
#include "support/Preferences.h"
#include "tests/fixtures/ScriptedView.h"
#include "tests/fixtures/TestPlatform.h"
#include "tests/scanners/PlainNameScan.h"
#include "text/Simplified.h"
#include "values/Keys.h"

namespace {

/// A clock that cancels the scan in the pass of a chosen seed, told by the work done: each pass reads the
/// time.
class CancellingClock : public Clock {
 public:
  explicit CancellingClock(OperationState &of) : operation(of) {}
  Date now() const override {
    if (operation.mNumberOfComparisons > cancelAbove) operation.mCancelOperation = true;
    return {};
  }
  void sleep(double) override {}

  OperationState &operation;
  double cancelAbove = 0.0;
};

/// Many names have one key, some have none, and some have no key because working it out fails.
QString firstLetter(const QString &text) {
  if (text == u"(failing)") throw std::runtime_error("no key");
  return text.startsWith(u'!') ? QString() : text.left(1).toLower();
}

class NameScanProperty : public TestPlatform {
 protected:
  using Texts = std::vector<const char16_t *>;

  bool oneIn(int chances) { return random() % quint32(chances) == 0; }
  Value oneOf(const Texts &texts) { return QString::fromUtf16(texts[random() % texts.size()]); }
  void maybe(const Dictionary &track, Key key, const Texts &texts) {
    if (!oneIn(12)) track.set(key, oneIn(25) ? Value(7) : oneOf(texts));
  }
  /// A few of the texts, so that some libraries hold one spelling only.
  Texts few(const Texts &texts) {
    Texts chosen;
    for (quint32 left = 1 + random() % 4; left > 0; --left) chosen.push_back(texts[random() % texts.size()]);
    return chosen;
  }
  void addTrack(const Texts &artists, const Texts &albums, const Texts &albumArtists, quint32 keyed);
  void randomLibrary(bool failing);
  void compare(const NameKeyMethod &method);

  std::mt19937 random{20240615};
  Array tracks;
  qsizetype artistRows = 0, albumRows = 0, cancels = 0, albumArtistKeys = 0, songs = 0;
  void count(const Array &rows);
};

void NameScanProperty::addTrack(const Texts &artists, const Texts &albums, const Texts &albumArtists,
                                quint32 keyed) {
  const Dictionary track = Dictionary::make();
  track.set(keys::TrackID, int(tracks.size()));
  maybe(track, keys::Artist, artists);
  maybe(track, keys::Album, albums);
  if (oneIn(2)) maybe(track, keys::AlbumArtist, albumArtists);
  // As a load leaves the tracks, without, or as a strange library names the keys itself.
  if (keyed == 0) track.set(keys::simplifiedArtist, simplifiedValue(track.value(keys::Artist)));
  for (const Key key : {keys::simplifiedArtist, keys::simplifiedAlbumArtist,
                        keys::metaphoneNoMinorWordsArtist, keys::metaphoneNoMinorWordsAlbumArtist}) {
    if (keyed == 1 && oneIn(10)) track.set(key, oneIn(8) ? Value(7) : oneOf({u"ann", u"bo", u"a", u""}));
  }
  if (keyed == 1 && oneIn(30)) track.set(keys::RKIsArtistMatched, true);
  if (keyed == 1 && oneIn(20)) track.set(keys::RKIsAlbumMatched, true);
  if (oneIn(10)) track.freeze();
  tracks.append(oneIn(60) ? Value(QStringLiteral("no track")) : Value(track));
}

void NameScanProperty::randomLibrary(bool failing) {
  tracks = Array::make();
  // Mostly one artist or two: what comes behind the first pass shows only where the spelling is one.
  Texts artists = few({u"Ann", u"Ann", u"ann!", u"The Ann", u"Bo", u"BO", u"", u"Kat", u"Cat", u"!!!",
                       u"Björk", u"Bjork", u"Anne"});
  if (oneIn(2)) artists.resize(1);
  Texts albums =
      few({u"Best", u"Best", u"best!", u"Live", u"LIVE", u"", u"Night", u"Knight", u"!!!", u"The"});
  if (oneIn(2)) albums.insert(albums.end(), {u"Best", u"BEST", u"Live", u"live", u"live!"});
  Texts albumArtists = artists;
  for (const char16_t *other : few({u"ANN", u"Ann", u"Bo", u"Various", u"", u"Katt"})) {
    albumArtists.push_back(other);
  }
  if (failing && oneIn(2)) albums.push_back(u"(failing)");
  if (failing && oneIn(2)) albumArtists.push_back(u"(failing)");
  const quint32 keyed = random() % 3;
  for (quint32 left = random() % 36; left > 0; --left) addTrack(artists, albums, albumArtists, keyed);
  if (oneIn(10)) tracks.freeze();
}

void NameScanProperty::count(const Array &rows) {
  for (const Value &row : rows) {
    const bool isArtist = row.toDictionary().value(keys::inconType).toText() == u"RKIsArtistMatched";
    ++(isArtist ? artistRows : albumRows);
    for (const Value &song : row.toDictionary().value(keys::inconSongs).toArray()) {
      ++songs;
      albumArtistKeys += song.toDictionary().contains(keys::simplifiedAlbumArtist);
    }
  }
}

/// Which tracks' dictionaries stand in more than one row, as the places where each stands.
QStringList sharedSongs(const Array &rows) {
  QMap<qint64, QString> places;
  QHash<const void *, qint64> trackOf;
  for (qsizetype row = 0; row < rows.size(); ++row) {
    for (const Value &song : rows.at(row).toDictionary().value(keys::inconSongs).toArray()) {
      const qint64 track = song.toDictionary().value(keys::TrackID).toInteger();
      places[track] += QStringLiteral("%1 ").arg(row);
      trackOf[song.toDictionary().identity()] = track;
    }
  }
  QStringList list = places.values();
  list.append(QString::number(trackOf.size()));
  return list;
}

void NameScanProperty::compare(const NameKeyMethod &method) {
  const quint32 cancelSeed = oneIn(2) ? random() % 30 : 1000, cancelCandidate = random() % 30;
  const auto isCancelled = [=](quint32 seed, quint32 candidate) {
    return seed > cancelSeed || (seed == cancelSeed && candidate >= cancelCandidate);
  };
  const int failAt = oneIn(4) ? int(random() % 3) : -1;
  const auto chooser = [failAt, rows = 0](const Dictionary &row) mutable {
    if (rows++ == failAt) throw std::runtime_error("no choice");
    row.set(keys::inconPref, rows);
  };
  PlainNameScan plain{tracks, method, isCancelled, chooser};
  plain.run();

  quint32 seed = 0;
  bool isPrepared = false;
  const Array copy = copyDeep(tracks), found = Array::make();
  InconsistentNameFinder finder(copy, method,
                                [&](quint32 track) { return isPrepared && isCancelled(seed, track); });
  isPrepared = true;
  auto choose = chooser;
  const auto size = quint32(tracks.size());
  for (bool cancelled = isCancelled(0, 0); seed < size && !cancelled; ++seed) {
    scanThread::guarded(QStringLiteral("inconsistent"), Value(), [&] {
      for (const Dictionary &row : finder.rowsOf(seed)) {
        choose(row);
        found.append(row);
      }
    });
    cancelled = isCancelled(seed, size);
  }
  ASSERT_TRUE(isEqual(found, plain.rows)) << description(tracks).toStdString() << "\nindex\n"
                                          << description(found).toStdString() << "\nwalk\n"
                                          << description(plain.rows).toStdString();
  ASSERT_EQ(sharedSongs(found), sharedSongs(plain.rows));
  cancels += seed < size;
  count(found);
}

TEST_F(NameScanProperty, IndexGivesTheRowsOfTheWalkOverAllPairs) {
  const NameKeyMethod letters{firstLetter, keys::simplifiedArtist, keys::simplifiedAlbumArtist};
  for (int round = 0; round < 12000; ++round) {
    SCOPED_TRACE(round);
    randomLibrary(round % 3 == 2);
    compare(round % 3 == 0   ? NameKeyMethod::simplifying()
            : round % 3 == 1 ? NameKeyMethod::phonetic()
                             : letters);
    if (HasFatalFailure()) return;
  }
  // The comparison means something only if there was something to find, and to stop.
  EXPECT_GT(artistRows, 1500);
  EXPECT_GT(albumRows, 4000);
  EXPECT_GT(cancels, 2000);
  EXPECT_GT(albumArtistKeys, 8000);
}

TEST_F(NameScanProperty, ThreadLeavesTheListAndTheCountOfTheWalk) {
  ScriptedView view;
  AppState state(view);
  InconNameController names;
  InconsistentNameScanner scanner(state, names);
  CancellingClock clock(state.operation);
  services.clock = &clock;
  setPlatform(services);
  for (int round = 0; round < 1500; ++round) {
    randomLibrary(false);
    setPreference(prefs::inconsistentMatchMethod, round % 3);
    const auto size = quint32(tracks.size());
    const quint32 cancelSeed = oneIn(2) && size > 2 ? 1 + random() % (size - 1) : size;
    PlainNameScan plain{tracks, NameKeyMethod::fromPreferences(),
                        [=](quint32 seed, quint32) { return seed >= cancelSeed; },
                        [&](const Dictionary &row) {
                          names.automaticallyChoosePreferredForDictionaryComparisonSelector(
                              row, NameKeyMethod::fromPreferences());
                        }};
    plain.run();
    state.library.mMusicLibrarySortedTracks = tracks;
    state.lists.mInconsistentNameDicts = Array::make();
    state.operation.mNumberOfComparisons = 0.0;
    state.operation.mCancelOperation = state.operation.mCompletedFindInconsistentNames = false;
    clock.cancelAbove = size / 1000.0 - 0.0005;
    for (quint32 seed = 0; seed < cancelSeed; ++seed) clock.cancelAbove += (size - seed - 1) / 1000.0;
    if (cancelSeed == size) clock.cancelAbove = 1.0e9;
    const Value before = copyDeep(Value(tracks));
    scanner.scanLibraryForInconsistentNamesThread();
    const Array &found = state.lists.mInconsistentNameDicts;
    ASSERT_TRUE(isEqual(found, plain.rows)) << "round " << round << description(found).toStdString() << '\n'
                                            << description(plain.rows).toStdString();
    ASSERT_DOUBLE_EQ(state.operation.mNumberOfComparisons, plain.comparisons) << "round " << round;
    ASSERT_EQ(state.operation.mCancelOperation, cancelSeed < size) << "round " << round;
    ASSERT_TRUE(state.operation.mCompletedFindInconsistentNames);
    ASSERT_TRUE(isEqual(tracks, before)) << "the library itself is not changed";
    count(found);
  }
  EXPECT_GT(artistRows + albumRows, 1000);
  setPlatform(services);
}

}  // namespace
