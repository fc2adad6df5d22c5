#include <random>

#include "support/Format.h"
#include "tests/scanners/PlainDuplicateScan.h"
#include "tests/scanners/ScanFixture.h"

namespace {

/// A clock that cancels the scan in the pass of a chosen seed: each pass reads the time.
class CancellingClock : public Clock {
 public:
  explicit CancellingClock(OperationState &of) : operation(of) {}
  Date now() const override {
    if (operation.mNumberOfScannedPaths >= cancelAt) operation.mCancelOperation = true;
    return {};
  }
  void sleep(double) override {}

  OperationState &operation;
  quint32 cancelAt = 0;
};

class DuplicateScanProperty : public ScanFixture {
 protected:
  template <class T>
  T oneOf(std::initializer_list<T> choices) {
    return *(choices.begin() + random() % choices.size());
  }
  bool oneIn(int chances) { return random() % quint32(chances) == 0; }

  void maybe(const Dictionary &track, Key key, std::initializer_list<Value> choices) {
    if (!oneIn(12)) track.set(key, oneOf(choices));
  }
  void randomPreferences();
  void randomTrack(int number);
  void randomLibrary();
  QSet<QString> ignoredBy(const QString &pid) const {
    return pid.isEmpty() ? QSet<QString>() : ignored.value(pid);
  }
  PlainDuplicateScan plainScan(quint32 begin, quint32 cancelAt);

  std::mt19937 random{20240607};
  QHash<QString, QSet<QString>> ignored;
};

void DuplicateScanProperty::randomPreferences() {
  for (const QString &key :
       {prefs::noMatchArtist, prefs::noMatchTitle, prefs::noMatchDuration, prefs::matchAlbum,
        prefs::matchFileKind, prefs::matchFileSize, prefs::noIgnoreLongTracks}) {
    setPreference(key, oneIn(3));
  }
  setPreference(prefs::allowedDurationVariation, oneOf({0, 1, 2, 5, 10, -1}));
  setPreference(prefs::ignoreDurationMinimum, oneOf({0, 1, 2, 30}));
}

void DuplicateScanProperty::randomTrack(int number) {
  const Dictionary track = Dictionary::make();
  const auto text = [](const char16_t *string) { return Value(QString::fromUtf16(string)); };
  if (!oneIn(20)) track.set(keys::PersistentID, QString::number(number));
  if (!oneIn(20)) track.set(keys::Path, u'/' + QString::number(number));
  if (oneIn(8)) gone.insert(u'/' + QString::number(number));
  maybe(track, keys::Artist, {text(u"Ann"), text(u"ann!"), text(u"Bo"), text(u""), text(u"Cy"), 7});
  maybe(track, keys::Name,
        {text(u"One"), text(u"The One"), text(u"Two"), text(u""), text(u"Three"), Value(3.5)});
  maybe(track, keys::Album, {text(u"Best"), text(u"best"), text(u""), text(u"Live"), Array::make()});
  maybe(track, keys::TotalTime,
        {0, 1000, 60000, 60001, 61000, 62000, 64500, 65000, 100100, 101100, Value(120000.0), text(u"61000"),
         1799999, 1800000, 1800001, Value(std::numeric_limits<double>::quiet_NaN())});
  maybe(track, keys::Kind, {text(u"MPEG audio file"), text(u"mpeg audio file"), text(u"AAC audio file"), 4});
  maybe(track, keys::Size, {100, Value(100.0), 101, Value(100.5), true, text(u"100")});
  // As a load leaves the tracks, or as a strange library names the keys itself.
  if (oneIn(2)) track.set(keys::simplifiedArtist, oneOf({text(u"ann"), text(u"bo"), text(u""), Value(1)}));
  if (oneIn(4)) track.set(keys::simplifiedAlbum, oneOf({text(u"best"), text(u"live"), text(u"")}));
  if (oneIn(20)) track.set(keys::simplifiedName, oneOf({text(u"one"), text(u"two")}));
  if (oneIn(20)) track.set(keys::DupeGroup, oneOf({Value(0), Value(3), text(u"x")}));
  state.library.mMusicLibrarySortedTracks.append(track);
}

void DuplicateScanProperty::randomLibrary() {
  gone.clear();
  ignored.clear();
  state.library.mMusicLibrarySortedTracks = Array::make();
  state.lists.mDuplicateSongDicts = Array::make();
  state.operation.mNumberOfComparisons = 0.0;
  state.operation.mCancelOperation = false;
  const int count = int(random() % 40);
  for (int number = 0; number < count; ++number) randomTrack(number);
  for (int pair = int(random() % 4); pair > 0; --pair) {
    const QString a = QString::number(random() % 40), b = QString::number(random() % 40);
    ignored[a] += QSet<QString>{a, b};
    ignored[b] += QSet<QString>{a, b};
  }
}

PlainDuplicateScan DuplicateScanProperty::plainScan(quint32 begin, quint32 cancelAt) {
  PlainDuplicateScan plain;
  plain.tracks = state.library.mMusicLibrarySortedTracks;
  plain.settings = DuplicateSettings::fromPreferences();
  plain.fileExists = [this](const QString &path) { return !gone.contains(path); };
  plain.ignored = [this](const QString &pid) { return ignoredBy(pid); };
  plain.isCancelled = [=](quint32 scanned) { return scanned > cancelAt; };
  plain.scanned = begin;
  plain.run();
  return plain;
}

TEST_F(DuplicateScanProperty, IndexGivesTheRowsOfTheWalkOverAllPairs) {
  CancellingClock clock(state.operation);
  services.clock = &clock;
  setPlatform(services);
  scanner.setIgnoredDuplicates([this](const QString &pid) { return ignoredBy(pid); });
  qsizetype rows = 0, cancels = 0, seedKeys = 0;
  for (int round = 0; round < 6000; ++round) {
    randomPreferences();
    randomLibrary();
    const quint32 begin = oneIn(10) ? random() % 5 : 0;
    state.operation.mNumberOfScannedPaths = begin;
    const quint32 cancelAt = oneIn(4) ? begin + 1 + random() % 20 : 0xFFFFFFFF;
    const PlainDuplicateScan plain = plainScan(begin, cancelAt);
    clock.cancelAt = cancelAt;
    asked.clear();
    scanner.scanLibraryForDuplicatesThread();
    const Array &found = state.lists.mDuplicateSongDicts;
    ASSERT_TRUE(isEqual(found, plain.rows)) << "round " << round << '\n'
                                            << description(found).toStdString() << '\n'
                                            << description(plain.rows).toStdString();
    ASSERT_EQ(state.operation.mNumberOfScannedPaths, plain.scanned) << "round " << round;
    ASSERT_DOUBLE_EQ(state.operation.mNumberOfComparisons, plain.comparisons) << "round " << round;
    rows += found.size();
    cancels += state.operation.mCancelOperation && plain.scanned < quint32(plain.tracks.size());
    for (const Value &row : found) seedKeys += row.toDictionary().contains(keys::simplifiedName);
  }
  setPlatform(services);
  // The comparison means something only if there was something to find, and to stop.
  EXPECT_GT(rows, 10000);
  EXPECT_GT(cancels, 300);
  EXPECT_GT(seedKeys, 1000);
}

}  // namespace
