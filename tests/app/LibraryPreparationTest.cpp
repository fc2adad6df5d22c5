#include "app/library/LibraryPreparation.h"

#include "tests/fixtures/TestPlatform.h"
#include "values/Keys.h"

namespace {

Array textList(std::initializer_list<const char16_t *> texts) {
  const Array list = Array::make();
  for (const char16_t *text : texts) list.append(QString::fromUtf16(text));
  return list;
}

Dictionary resources() {
  const Dictionary tables = Dictionary::make();
  tables.set(keys::ignoreKinds, textList({u"PDF document", u"MPEG"}));
  tables.set(keys::ignoreKindSubstrings, textList({u"video", u""}));
  return tables;
}

struct Library {
  Dictionary root = Dictionary::make();
  Dictionary tracks = Dictionary::make();

  Library() { root.set(keys::Tracks, tracks); }

  Dictionary add(const char16_t *artist, const char16_t *album, int number) {
    const Dictionary track = Dictionary::make();
    track.set(keys::TrackID, int(tracks.size()));
    track.set(keys::Kind, QStringLiteral("MPEG audio file"));
    track.set(keys::TotalTime, 1000);
    if (artist) track.set(keys::Artist, QString::fromUtf16(artist));
    if (album) track.set(keys::Album, QString::fromUtf16(album));
    if (number) track.set(keys::TrackNumber, number);
    tracks.set(Key(QString::number(tracks.size())), track);
    return track;
  }
};

std::vector<qint64> idsOf(const Array &tracks) {
  std::vector<qint64> ids;
  for (const Value &track : tracks) ids.push_back(track.toDictionary().value(keys::TrackID).toInteger());
  return ids;
}

class LibraryPreparation : public TestPlatform {
 protected:
  PreparedLibrary prepare(const Library &library, const QHash<QString, QString> &overrides = {}) {
    TrackFilter filter(resources());
    return prepareLibrary(library.root, filter, overrides, volumePrefix);
  }
  QString volumePrefix;
};

}  // namespace

TEST_F(LibraryPreparation, KeepsSongsAndDropsEverythingElse) {
  using Verdict = TrackFilter::Verdict;
  const struct {
    Key key;
    Value value;
    Verdict verdict;
  } cases[] = {
      {keys::Name, QStringLiteral("plain"), Verdict::Kept},
      {keys::Kind, Value(), Verdict::NoKind},
      {keys::HasVideo, true, Verdict::Video},
      {keys::HasVideo, false, Verdict::Kept},
      {keys::TotalTime, Value(), Verdict::NoDuration},
      {keys::TotalTime, 0, Verdict::Kept},
      {keys::Kind, QStringLiteral("PDF document"), Verdict::IgnoredKind},
      {keys::Kind, QStringLiteral("pdf document"), Verdict::Kept},
      {keys::Kind, QStringLiteral("MPEG-4 video file"), Verdict::IgnoredKindPart},
      {keys::Kind, QStringLiteral("MPEG-4 Video file"), Verdict::Kept},
      {keys::Location, QStringLiteral("file:///a.m4r"), Verdict::Ringtone},
      {keys::Location, QStringLiteral("file:///a.M4R"), Verdict::Kept},
      {keys::Location, QStringLiteral("http://radio"), Verdict::Kept},
  };
  for (const auto &[key, value, verdict] : cases) {
    Library library;
    library.add(u"A", u"B", 1).set(key, value);
    const PreparedLibrary prepared = prepare(library);
    EXPECT_EQ(prepared.verdicts[size_t(verdict)], 1) << qPrintable(key.text());
    EXPECT_EQ(library.tracks.size(), verdict == Verdict::Kept ? 1 : 0) << qPrintable(key.text());
    EXPECT_EQ(prepared.sortedTracks.size(), library.tracks.size());
  }
}

TEST_F(LibraryPreparation, SortsByArtistAlbumAndNumberWithTiesInTheFilesOrder) {
  Library library;
  library.add(u"b", u"x", 2);       // 0
  library.add(u"B", u"x", 10);      // 1
  library.add(nullptr, u"z", 1);    // 2
  library.add(u"b", nullptr, 9);    // 3
  library.add(u"B", u"x", 9);       // 4
  library.add(u"b", u"x", 0);       // 5
  library.add(u"b", u"x", 2);       // 6
  library.add(u"\u00e4", u"x", 1);  // 7
  EXPECT_EQ(idsOf(prepare(library).sortedTracks), (std::vector<qint64>{2, 4, 1, 3, 5, 0, 6, 7}));
}

TEST_F(LibraryPreparation, OnlyFileAddressesGivePaths) {
  const struct {
    const char16_t *location, *path, *prefix;
  } cases[] = {
      {u"file:///M/a%20b.mp3", u"/M/a b.mp3", u""},
      {u"file://localhost/M/a.mp3", u"/M/a.mp3", u""},
      {u"http://host/a.mp3", u"", u""},
      {u"file:///", u"", u""},
      {u"file:///M/%ZZ.mp3", u"", u""},
      {u"file:///old.mp3", u"/new.mp3", u""},
      {u"file:///M/a.mp3", u"/Volumes/Disk//M/a.mp3", u"/Volumes/Disk/"},
      {u"file:///Volumes/X/a.mp3", u"/Volumes/X/a.mp3", u"/Volumes/Disk/"},
      {u"file://localhost/C:/a.mp3", u"/Volumes/Disk//C:/a.mp3", u"/Volumes/Disk/"},
      {u"file:C:/a.mp3", u"C:/a.mp3", u"/Volumes/Disk/"},
  };
  const QHash<QString, QString> overrides{{QStringLiteral("/old.mp3"), QStringLiteral("/new.mp3")}};
  for (const auto &[location, path, prefix] : cases) {
    Library library;
    const Dictionary track = library.add(u"A", u"B", 1);
    track.set(keys::Location, QString::fromUtf16(location));
    volumePrefix = QString::fromUtf16(prefix);
    const PreparedLibrary prepared = prepare(library, overrides);
    const QString expected = QString::fromUtf16(path);
    EXPECT_EQ(track.value(keys::Path).toText(), expected) << qPrintable(QString::fromUtf16(location));
    EXPECT_EQ(prepared.paths.size(), expected.isEmpty() ? 0U : 1U);
    EXPECT_EQ(prepared.sortedTracks.size(), 1);
  }
}

TEST_F(LibraryPreparation, AnAbsentArtistGetsNoKeyAndAHostileOneNoCrash) {
  Library library;
  const Dictionary nameless = library.add(nullptr, u"The B\u00f6x", 1);
  const Dictionary hostile = library.add(u"x", nullptr, 1);
  hostile.set(keys::Artist, Dictionary::make());
  prepare(library);
  EXPECT_FALSE(nameless.contains(keys::simplifiedArtist));
  EXPECT_EQ(nameless.value(keys::simplifiedAlbum).toText(), QStringLiteral("box"));
  EXPECT_FALSE(hostile.contains(keys::simplifiedArtist));
}
