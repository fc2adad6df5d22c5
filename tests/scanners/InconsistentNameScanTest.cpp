#include <thread>

#include "app/state/AppState.h"
#include "scanners/InconNameController.h"
#include "scanners/InconsistentNameScanner.h"
#include "support/Preferences.h"
#include "tests/fixtures/ScriptedView.h"
#include "tests/fixtures/TestPlatform.h"
#include "text/Simplified.h"
#include "values/Keys.h"

namespace {

/// A track by its names; null ones are absent.
struct Names {
  const char16_t *artist;
  const char16_t *album = nullptr;
  const char16_t *albumArtist = nullptr;
};

class InconsistentNameScan : public TestPlatform {
 protected:
  InconsistentNameScan() { state.library.mMusicLibrarySortedTracks = Array::make(); }

  Dictionary add(const Names &of) {
    const Dictionary track = Dictionary::make();
    track.set(keys::TrackID, int(tracks().size()));
    const auto setText = [&](Key key, const char16_t *text) {
      if (text) track.set(key, QString::fromUtf16(text));
    };
    setText(keys::Artist, of.artist);
    setText(keys::Album, of.album);
    setText(keys::AlbumArtist, of.albumArtist);
    tracks().append(track);
    return track;
  }

  Array &tracks() { return state.library.mMusicLibrarySortedTracks; }

  /// The rows found, as "artist:0,1 album:2,3": the numbers of their tracks, "+" for a bare spelling.
  QString scan() {
    state.lists.mInconsistentNameDicts = Array::make();
    scanner.scanLibraryForInconsistentNamesThread();
    QStringList rows;
    for (const Value &value : state.lists.mInconsistentNameDicts) {
      const Dictionary &row = value.toDictionary();
      QStringList songs;
      for (const Value &song : row.value(keys::inconSongs).toArray()) {
        const Value &number = song.toDictionary().value(keys::TrackID);
        songs += number.isNull() ? QStringLiteral("+") : QString::number(number.toInteger());
      }
      const bool isArtist = row.value(keys::inconType).toText() == u"RKIsArtistMatched";
      rows += (isArtist ? QStringLiteral("artist:") : QStringLiteral("album:")) + songs.join(u',');
    }
    return rows.join(u' ');
  }

  Dictionary song(qsizetype row, qsizetype index) const {
    const Dictionary &found = state.lists.mInconsistentNameDicts.at(row).toDictionary();
    return found.value(keys::inconSongs).toArray().at(index).toDictionary();
  }

  ScriptedView view;
  AppState state{view};
  InconNameController names;
  InconsistentNameScanner scanner{state, names};
};

/// Between two looks at it more than five minutes pass.
class HurriedClock : public Clock {
 public:
  Date now() const override { return Date{seconds += 301.0}; }
  void sleep(double) override {}

 private:
  mutable double seconds = 0.0;
};

struct LibraryCase {
  const char *why;
  std::vector<Names> library;
  const char16_t *bySpelling;
  const char16_t *bySound;
};

TEST_F(InconsistentNameScan, FindsWhatIsSpelledInMoreThanOneWay) {
  const std::vector<LibraryCase> cases{
      {"one spelling", {{u"Ann", u"Best"}, {u"Ann", u"Best"}, {u"Ann"}}, u"", u""},
      {"all tracks of all spellings",
       {{u"Beatles"}, {u"Beatles"}, {u"Kinks"}, {u"The Beatles"}, {u"beatles!"}},
       u"artist:0,1,3,4",
       u"artist:0,1,3"},
      {"a sound is no spelling", {{u"Cat"}, {u"Kat"}}, u"", u"artist:0,1"},
      {"empty and absent artists begin and join nothing",
       {{u"", u"a b"}, {u"", u"A B"}, {nullptr, u"A B"}, {u" ", u"a B"}},
       u"",
       u""},
      {"an album of one artist",
       {{u"Ann", u"ABBEY ROAD"}, {u"Ann", u"Abbey Road"}, {u"Bo", u"abbey road"}},
       u"album:0,1",
       u"album:0,1"},
      {"albums that are not the first seed's",
       {{u"Ann", u"Live"}, {u"Ann", u"best"}, {u"Ann"}, {u"Ann", u"Best"}, {u"Ann", u"LIVE"}},
       u"album:0,4 album:1,3",
       u"album:0,4 album:1,3"},
      {"of a reported artist only the first seed's album is looked at",
       {{u"Ann", u"Live"}, {u"ann", u"best"}, {u"Ann", u"Best"}, {u"Ann", u"LIVE"}},
       u"artist:0,1,2,3 album:0,3",
       u"artist:0,1,2,3 album:0,3"},
      {"a seed without an album begins no album's row",
       {{u"Ann"}, {u"ann", u"best"}, {u"Ann", u"Best"}},
       u"artist:0,1,2",
       u"artist:0,1,2"},
      {"a spelling that stands in an album artist alone",
       {{u"Ann", u"x", u"ANN"}, {u"Ann", u"y", u"ANN"}, {u"Bo", u"x", u"BO"}, {u"Bo"}},
       u"artist:0,1,+",
       u"artist:0,1,+"},
      {"another album artist is no spelling", {{u"Ann", u"x", u"Bo"}, {u"Ann", u"x", u"Bo"}}, u"", u""},
  };
  for (const LibraryCase &one : cases) {
    tracks() = Array::make();
    for (const Names &track : one.library) add(track);
    for (const bool phonetic : {false, true}) {
      setPreference(prefs::inconsistentMatchMethod, phonetic ? 1 : 0);
      EXPECT_EQ(scan(), QString::fromUtf16(phonetic ? one.bySound : one.bySpelling))
          << one.why << (phonetic ? ", by sound" : ", by spelling");
    }
  }
}

TEST_F(InconsistentNameScan, PluralsJoinWhereTheyAreIgnored) {
  add({u"Beatles"});
  add({u"Beatle"});
  EXPECT_EQ(scan(), QString());
  setSimplifiersDictionaryRemoveTrailingS(Dictionary::make(), true);
  EXPECT_EQ(scan(), QStringLiteral("artist:0,1"));
  clearSimplifiers();
}

TEST_F(InconsistentNameScan, RowsHoldMarkedCopiesWithTheKeysThatWereComputed) {
  setPreference(prefs::inconsistentMatchMethod, 1);
  const Dictionary original = add({u"Kat", u"Best", u"Kat"});
  add({u"Kat", u"Best", u"Various"});
  add({u"Cat", u"best", u"Cat"}).freeze();
  EXPECT_EQ(scan(), QStringLiteral("artist:0,1,2 album:0,1,2"));
  EXPECT_FALSE(original.contains(keys::RKIsArtistMatched));
  EXPECT_FALSE(song(0, 0).contains(keys::metaphoneNoMinorWordsArtist)) << "a seed's own key is not kept";
  EXPECT_EQ(song(0, 1).value(keys::metaphoneNoMinorWordsArtist).toText(), QStringLiteral("kt"));
  EXPECT_EQ(song(0, 1).value(keys::metaphoneNoMinorWordsAlbumArtist).toText(), QStringLiteral("frs"));
  EXPECT_FALSE(song(0, 2).contains(keys::metaphoneNoMinorWordsAlbumArtist)) << "its artist differs already";
  for (qsizetype index = 0; index < 3; ++index) {
    EXPECT_TRUE(song(0, index).isSame(song(1, index)));
    EXPECT_TRUE(song(0, index).value(keys::RKIsArtistMatched).toBool());
    EXPECT_TRUE(song(0, index).value(keys::RKIsAlbumMatched).toBool());
  }
}

TEST_F(InconsistentNameScan, ALibraryOfOneNameStaysNearLinear) {
  // With the same pass done again for each track this would take hours.
  for (int number = 0; number < 200000; ++number) {
    add({u"Ann", number % 2 ? u"Best" : u"Live", u"Ann"});
  }
  EXPECT_EQ(scan(), QString());
}

TEST_F(InconsistentNameScan, RowsAreCompleteAsSoonAsTheyAreSeen) {
  for (int number = 0; number < 6000; ++number) {
    const Dictionary track = add({nullptr, number % 2 ? u"Best" : u"BEST"});
    track.set(keys::Artist, QStringLiteral("Ann %1").arg(number / 4).repeated(1 + number % 3 / 2));
  }
  const Array list = state.lists.mInconsistentNameDicts;
  const ObjectLock lock = state.threadLockForObject(list);
  state.threadLockForObject(tracks());
  std::thread worker([&] { scanner.scanLibraryForInconsistentNamesThread(); });
  qsizetype songs = 0;
  for (bool last = false; !last;) {
    last = state.operation.mCompletedFindInconsistentNames;
    std::lock_guard held(*lock);
    for (const Value &row : list) {
      EXPECT_TRUE(row.toDictionary().contains(keys::inconPref));
      const Key mark(row.toDictionary().value(keys::inconType).toText());
      for (const Value &value : row.toDictionary().value(keys::inconSongs).toArray()) {
        EXPECT_TRUE(value.toDictionary().contains(mark));
        ++songs;
      }
    }
  }
  worker.join();
  EXPECT_GT(songs, 0);
}

TEST_F(InconsistentNameScan, ALongScanTellsHowFarItIs) {
  for (int number = 0; number < 4; ++number) add({u"Ann"});
  scan();
  EXPECT_FALSE(logContains(QStringLiteral("scanLibraryForInconsist... ")));
  HurriedClock clock;
  services.clock = &clock;
  setPlatform(services);
  scan();
  EXPECT_TRUE(logContains(QStringLiteral("scanLibraryForInconsist... 25% [1/4]")));
  services.clock = &time;
  setPlatform(services);
}

}  // namespace
