#include "scanners/InconNameController.h"

#include <stdexcept>

#include "tests/text/TextFixture.h"
#include "values/Keys.h"

namespace {

const NameKeyMethod kBySpelling = NameKeyMethod::simplifying();

Value textOf(const char *utf8) {
  return utf8 ? Value(QString::fromUtf8(utf8)) : Value();
}

Dictionary songOf(const char *artist, const char *album = nullptr, const char *albumArtist = nullptr) {
  const Dictionary song = Dictionary::make();
  song.set(keys::Artist, textOf(artist));
  song.set(keys::Album, textOf(album));
  song.set(keys::AlbumArtist, textOf(albumArtist));
  for (const auto &[name, key] : {std::pair(keys::Artist, keys::simplifiedArtist),
                                  std::pair(keys::AlbumArtist, keys::simplifiedAlbumArtist)})
    song.set(key, simplifiedValue(song.value(name)));
  return song;
}

Dictionary rowOf(const char16_t *type, const std::vector<Dictionary> &songs) {
  const Dictionary row = Dictionary::make();
  const Array list = Array::make();
  for (const Dictionary &song : songs) list.append(song);
  row.set(keys::inconType, QString::fromUtf16(type));
  row.set(keys::inconSongs, list);
  return row;
}
Dictionary artistRow(const std::vector<Dictionary> &songs) {
  return rowOf(u"RKIsArtistMatched", songs);
}
Dictionary albumRow(const std::vector<Dictionary> &songs) {
  return rowOf(u"RKIsAlbumMatched", songs);
}

Array listOf(std::initializer_list<Value> values) {
  const Array list = Array::make();
  for (const Value &value : values) list.append(value);
  return list;
}

}  // namespace

class InconName : public TextFixture {
 protected:
  InconName() {
    const Dictionary resources = Dictionary::make(), albums = Dictionary::make();
    resources.set(keys::oddNameArtists,
                  listOf({textOf("AC/DC"), textOf("ac-dc"), textOf(""), 7, textOf("RADIOHEAD")}));
    albums.set(Key(u"Radiohead"), listOf({textOf("Ok computer"), textOf("OK Computer"), 7, listOf({})}));
    albums.set(Key(u"radioHead"), listOf({textOf("Kid a")}));
    albums.set(Key(u"Low"), 7);
    resources.set(keys::oddNameAlbums, albums);
    odd.setResources(resources);
  }

  std::string chosen(const InconNameController &controller, const Dictionary &row) {
    const auto name =
        controller.automaticallyChoosePreferredForDictionaryComparisonSelector(row, kBySpelling);
    EXPECT_EQ(row.value(keys::inconPref).isNull(), !name);
    if (!name) return "-";
    EXPECT_EQ(row.value(keys::inconPref).toText(), *name);
    return name->toStdString();
  }

  /// "plain<3>*bold<2>*": each run with its song, stars around what is bold.
  std::string shown(const Dictionary &row) {
    std::string text;
    for (const StyledRun &run : plain.calculatedInconsistentAttributedStringForDictionary(row)) {
      const std::string song = run.sourceIndex ? '<' + std::to_string(*run.sourceIndex) + '>' : "";
      text += (run.bold ? "*" : "") + run.text.toStdString() + song + (run.bold ? "*" : "");
    }
    return text;
  }

  InconNameController plain, odd;
};

TEST_F(InconName, ScoreCountsLengthAndWellCapitalizedWords) {
  const std::pair<const char *, int> cases[] = {
      {"The Beatles", 14}, {"the beatles", 12}, {"Beatles", 9},    {"beatles", 8},
      {"ABBA", 5},         {"Abba", 6},         {"", 1},           {"McCartney", 11},
      {"Mccartney", 10},   {"O'Brien", 9},      {"O'brien", 8},    {"Mc", 4},
      {"10cc", 6},         {"éa Éa", 8},        {" Abba", 0},      {"Abba\t", 0},
      {"Abba\n", 7},       {"The  Beatles", 0}, {"Ab\u200B", 0},   {"The of", 8},
      {"Up up Up", 12},    {"Up Up Up", 11},    {"Up uP Up", 11},  {"Simon and Garfunkel", 23},
      {"A-ha", 6},         {"a-ha", 5},         {"Up the Up", 13}, {"Simon And Garfunkel", 22},
  };
  for (const auto &[name, score] : cases) EXPECT_EQ(plain.nameScore(QString::fromUtf8(name)), score) << name;
  EXPECT_EQ(plain.nameScore(QString()), 0);
  const QChar half[] = {QChar(0xD800), u' ', QChar(0xDC00)};
  EXPECT_EQ(plain.nameScore(QString(half, 3)), 6);
}

TEST_F(InconName, TheBestScoreWinsAndOfEqualsTheLaterSong) {
  const struct {
    std::vector<const char *> artists;
    const char *winner;
  } cases[] = {
      {{"beatles", "Beatles", "The Beatles", "the beatles"}, "The Beatles"},
      {{"ABBA", "Abba"}, "Abba"},
      {{"Bach", "Beck", "bach"}, "Beck"},
      {{"Beck", "Bach", "Beck"}, "Beck"},
      {{"A  b", " ab"}, " ab"},
      {{nullptr, " ab"}, " ab"},
      {{" ab", nullptr}, "-"},
      {{"", nullptr}, ""},
      {{}, "-"},
  };
  for (const auto &expected : cases) {
    std::vector<Dictionary> songs;
    for (const char *artist : expected.artists) songs.push_back(songOf(artist));
    EXPECT_EQ(chosen(plain, artistRow(songs)), expected.winner);
  }
  const Dictionary fixed = artistRow({songOf("a"), songOf("A")});
  fixed.freeze();
  EXPECT_EQ(plain.automaticallyChoosePreferredForDictionaryComparisonSelector(fixed, kBySpelling),
            QStringLiteral("A"));
}

TEST_F(InconName, ExceptionsWinOverTheScore) {
  // Both tables are read from their ends, so that the first of two entries stays.
  const Dictionary there = artistRow({songOf("Ac Dc"), songOf("AC/DC")});
  EXPECT_EQ(chosen(odd, there), "AC/DC");
  EXPECT_EQ(there.value(keys::inconSongs).toArray().size(), 2);

  const Dictionary absent = artistRow({songOf("ac dc"), songOf("Ac Dc")});
  EXPECT_EQ(chosen(odd, absent), "AC/DC");
  const Dictionary bare = absent.value(keys::inconSongs).toArray().at(2).toDictionary();
  EXPECT_EQ(bare.size(), 1);
  EXPECT_TRUE(odd.preferredSongFromDictionary(absent).isSame(bare));

  EXPECT_EQ(chosen(odd, artistRow({songOf("radiohead")})), "Radiohead");
  EXPECT_EQ(chosen(odd, artistRow({songOf("low")})), "Low");
  EXPECT_EQ(chosen(odd, artistRow({songOf("low"), songOf("radiohead")})), "Low") << "the first is asked for";

  // In a list of albums the last of two wins.
  const Dictionary album = albumRow({songOf("radiohead", "Ok Computer"), songOf("radiohead", "ok computer")});
  EXPECT_EQ(chosen(odd, album), "OK Computer");
  const Dictionary added = album.value(keys::inconSongs).toArray().at(2).toDictionary();
  EXPECT_EQ(added.value(keys::Artist).toText(), QStringLiteral("radiohead"));
  EXPECT_EQ(added.size(), 2);
  EXPECT_EQ(chosen(odd, albumRow({songOf("Radiohead", "kid a"), songOf("Radiohead", "Kid A")})), "Kid A");
  EXPECT_EQ(chosen(odd, albumRow({songOf("Low", "OK computer"), songOf("Low", "Ok Computer")})),
            "Ok Computer");
  EXPECT_EQ(chosen(odd, albumRow({songOf("Radiohead")})), "-");
}

TEST_F(InconName, SpellingsOfAlbumArtistsAreCandidatesOnceForEachSong) {
  const Dictionary unread = songOf("ABBA", nullptr, "Abba, The");
  unread.remove(keys::simplifiedAlbumArtist);
  const Dictionary row = artistRow({songOf("abba", nullptr, "Abba"), songOf("abba", nullptr, "Various"),
                                    songOf("abba", nullptr, "abba"), songOf("abba", nullptr, "A. B. B. A."),
                                    songOf("abba", nullptr, "Abba"), songOf("abba", nullptr, ""), unread});
  EXPECT_EQ(chosen(plain, row), "A. B. B. A.");
  QStringList added;
  const Array &songs = row.value(keys::inconSongs).toArray();
  for (qsizetype i = 7; i < songs.size(); ++i)
    added << songs.at(i).toDictionary().value(keys::Artist).toText();
  EXPECT_EQ(added.join(u'|'), QStringLiteral("Abba|A. B. B. A.|Abba"));

  const Dictionary fixed = artistRow({songOf("abba", nullptr, "Abba")});
  fixed.value(keys::inconSongs).toArray().freeze();
  EXPECT_EQ(chosen(plain, fixed), "abba");
}

TEST_F(InconName, TheLineShowsEachSpellingOnceFromTheLastSong) {
  const Dictionary artists = artistRow({songOf("Abba"), songOf(nullptr), songOf("ABBA"), songOf("Abba")});
  EXPECT_EQ(shown(artists), "Abba<3>, ABBA<2>");
  artists.set(keys::inconPref, QStringLiteral("ABBA"));
  EXPECT_EQ(shown(artists), "Abba<3>, *[ABBA]<2>*");

  const Dictionary commas = albumRow({songOf("X", "a, b"), songOf("Y", "A b")});
  commas.set(keys::inconPref, QStringLiteral("a, b"));
  EXPECT_EQ(shown(commas), "Y: \"A b\"<1>, *[\"a, b\"]<0>*");
  EXPECT_EQ(shown(artistRow({songOf("a"), songOf("a ")})), "\"a \"<1>, \"a\"<0>");
  EXPECT_EQ(shown(artistRow({songOf("a\n")})), "a\n<0>");
  EXPECT_EQ(shown(albumRow({songOf(nullptr, "a")})), "a<0>");
  EXPECT_EQ(shown(Dictionary::make()), "");

  const StyledText line = plain.calculatedInconsistentAttributedStringForDictionary(commas);
  const StyledText back = styledTextOfValue(valueOfStyledText(line));
  ASSERT_EQ(back.size(), line.size());
  EXPECT_EQ(plainText(back), plainText(line));
  EXPECT_TRUE(back.back().bold && back.back().sourceIndex == 0 && !back.front().sourceIndex);
  EXPECT_TRUE(styledTextOfValue(listOf({7})).empty());
}

TEST_F(InconName, AClickTakesTheSpellingUnderIt) {
  const auto monospaced = [](const StyledText &, float x) { return std::optional(qsizetype(x)); };
  const Dictionary row = albumRow({songOf("X", "ab"), songOf("X", "AB")});
  row.set(keys::inconPref, QStringLiteral("ab"));
  // X: AB, [ab]
  const std::pair<float, const char *> cases[] = {{0, "-"}, {2.9f, "-"}, {3, "AB"}, {4.9f, "AB"},
                                                  {5, "-"}, {7, "ab"},   {99, "-"}, {-1, "-"}};
  for (const auto &[x, expected] : cases) {
    row.set(keys::inconPref, QStringLiteral("ab"));
    const auto name = plain.userChoosePreferredForDictionaryUsingXPoint(row, x, monospaced);
    EXPECT_EQ(name.value_or(QStringLiteral("-")).toStdString(), expected) << x;
    EXPECT_EQ(row.value(keys::inconPref).toText(), name.value_or(QStringLiteral("ab")));
  }
  const auto nowhere = [](const StyledText &, float) { return std::optional<qsizetype>(); };
  EXPECT_FALSE(plain.userChoosePreferredForDictionaryUsingXPoint(row, 3, nowhere));
  EXPECT_FALSE(plain.userChoosePreferredForDictionaryUsingSong(row, -1));
  EXPECT_FALSE(plain.userChoosePreferredForDictionaryUsingSong(row, 2));
}

TEST_F(InconName, ThePreferredSongIsTheLastThatHasTheSpelling) {
  const Dictionary last = songOf("a");
  const Dictionary row = artistRow({songOf("a"), last, songOf("A")});
  EXPECT_THROW(plain.preferredSongFromDictionary(row), std::out_of_range);
  row.set(keys::inconPref, QStringLiteral("a"));
  EXPECT_TRUE(plain.preferredSongFromDictionary(row).isSame(last));
  row.set(keys::inconPref, QStringLiteral("b"));
  EXPECT_THROW(plain.preferredSongFromDictionary(row), std::out_of_range);
}

TEST_F(InconName, OddValuesAreNoNames) {
  const Dictionary odd1 = songOf(nullptr), odd2 = songOf(nullptr);
  odd1.set(keys::Artist, 7);
  odd2.set(keys::Artist, Array::make());
  const Dictionary row = artistRow({odd1, songOf("a"), odd2});
  row.value(keys::inconSongs).toArray().append(7);
  EXPECT_EQ(chosen(odd, row), "a");
  EXPECT_EQ(shown(row), "*[a]<1>*");
  const Dictionary none = Dictionary::make();
  none.set(keys::inconSongs, 7);
  EXPECT_EQ(chosen(odd, none), "-");
}
