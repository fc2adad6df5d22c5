#include "audio/SongFile.h"
#include "audio/mp4/AACInfoTag.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

using Comparison = int (SongFile::*)(SongFile &);
using Values = std::initializer_list<std::pair<void (AACInfoTag::*)(const QString &), const char16_t *>>;

class SongOrder : public TestPlatform {
 protected:
  /// A song whose tag has these values and no others.
  SongFilePtr song(Values values) {
    SongFilePtr made = SongFile::songWithPath(writeFile(u"music/a.mp3"_qs, QByteArray(300, 'x')));
    auto tag = std::make_unique<AACInfoTag>();
    for (const auto &[set, value] : values) ((*tag).*set)(QString::fromUtf16(value));
    made->setInfotag(std::move(tag));
    return made;
  }
};

constexpr auto kTitle = &AACInfoTag::setTitle, kArtist = &AACInfoTag::setArtist,
               kAlbum = &AACInfoTag::setAlbum, kYear = &AACInfoTag::setYear, kTrack = &AACInfoTag::setTrack,
               kLyrics = &AACInfoTag::setLyrics, kBPM = &AACInfoTag::setBPM;

TEST_F(SongOrder, OneSongGoesBeforeAnother) {
  const QString hundred(100, u'x'), fewer(99, u'x');
  const auto long100 = reinterpret_cast<const char16_t *>(hundred.utf16());
  const auto short99 = reinterpret_cast<const char16_t *>(fewer.utf16());
  const struct {
    const char *what;
    Comparison compare;
    Values first, second;
    int expected;
  } cases[] = {
      {"numbers by worth", &SongFile::rawCompareTitle, {{kTitle, u"Part 9"}}, {{kTitle, u"part 10"}}, -1},
      {"leading zeros", &SongFile::rawCompareTitle, {{kTitle, u"01 A"}}, {{kTitle, u"1 a"}}, 0},
      {"an album before none", &SongFile::rawCompareAlbum, {{kAlbum, u"z"}}, {}, -1},
      {"no year before any", &SongFile::rawCompareYear, {{kYear, u"1999"}}, {}, 1},
      {"years by worth", &SongFile::rawCompareYear, {{kYear, u"1999"}}, {{kYear, u"2001"}}, -1},
      {"tracks by number", &SongFile::rawCompareTrack, {{kTrack, u"2/9"}}, {{kTrack, u"10"}}, -1},
      {"a track before none", &SongFile::rawCompareTrack, {{kTrack, u"/9"}}, {}, -1},
      {"short lyrics", &SongFile::rawCompareLyrics, {{kLyrics, short99}}, {{kLyrics, long100}}, -1},
      {"no lyrics", &SongFile::rawCompareLyrics, {{kLyrics, u"x"}}, {}, 1},
      {"tempo", &SongFile::rawCompareBPM, {{kBPM, u"99"}}, {{kBPM, u"100"}}, -1},
      {"no tempo is 0", &SongFile::rawCompareBPM, {}, {{kBPM, u"x"}}, 0},
      {"then the album, then the track",
       &SongFile::compareArtist,
       {{kArtist, u"a"}, {kTrack, u"2"}},
       {{kArtist, u"A"}, {kTrack, u"1"}},
       1},
      {"lyrics tie in reverse", &SongFile::compareLyrics, {{kAlbum, u"a"}}, {{kAlbum, u"b"}}, 1},
      {"title decides among indexes", &SongFile::compareIndex, {{kTitle, u"a"}}, {{kTitle, u"b"}}, -1},
  };
  for (const auto &one : cases) {
    const auto first = song(one.first), second = song(one.second);
    const auto sign = [](int order) { return (order > 0) - (order < 0); };
    EXPECT_EQ(sign(((*first).*one.compare)(*second)), one.expected) << one.what;
    EXPECT_EQ(sign(((*second).*one.compare)(*first)), -one.expected) << one.what;
  }
}

TEST_F(SongOrder, PicturesStatusIndexAndFlagHaveTheirOwnOrder) {
  const auto first = song({}), second = song({});
  EXPECT_EQ(first->rawCompareArt(*second), 0);
  first->setHasiTunesArtwork(1);
  EXPECT_EQ(first->rawCompareArt(*second), 1);
  second->infotag()->addImage(ID3Image::imageWithDataMimeType("p", {}));
  EXPECT_EQ(first->rawCompareArt(*second), -1) << "one picture counts two";
  second->infotag()->setIsLazy(true);
  EXPECT_EQ(first->rawCompareArt(*second), 1) << "an unknown count is less than none";
  first->setActivityStatus(SongFile::kFailed);
  EXPECT_EQ(first->compareActivity(*second), -1);
  first->infotag()->setPlayListAndIndex(u"L"_qs, 3);
  EXPECT_EQ(first->compareIndex(*second), -1);
  second->infotag()->setIsPartOfCompilation(true);
  EXPECT_EQ(first->compareCompilation(*second), -1);
  EXPECT_EQ(SongFile::compareTo(2, 1), -1);
}

}  // namespace
