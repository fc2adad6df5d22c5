#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "repairs/MarkChooser.h"
#include "values/Keys.h"

namespace {

constexpr qint32 kSmallest = std::numeric_limits<qint32>::min();
constexpr qint32 kLargest = std::numeric_limits<qint32>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using Entries = std::vector<DictionaryEntry>;
using Group = std::vector<Entries>;

Dictionary dictionaryOf(const Entries &entries) {
  const Dictionary made = Dictionary::make();
  for (const DictionaryEntry &entry : entries) made.set(entry.key, entry.value);
  return made;
}

std::vector<Dictionary> rowsOf(const Group &group) {
  std::vector<Dictionary> rows;
  for (const Entries &entries : group) rows.push_back(dictionaryOf(entries));
  return rows;
}

/// A group whose rows differ in one value; nothing leaves the key out.
Group rowsWith(Key key, const std::vector<Value> &values) {
  Group group;
  for (const Value &value : values) group.push_back({{key, value}});
  return group;
}

FileKinds kinds() {
  const Array lossless = Array::make();
  lossless.append(QStringLiteral("Lossless"));
  const Array mpeg = Array::make();
  mpeg.append(QStringLiteral("MPEG"));
  return FileKinds(dictionaryOf({{Key(u"0"), QStringLiteral("aac")},
                                 {Key(u"1"), mpeg},
                                 {Key(u"2"), lossless},
                                 {Key(u"3"), QStringLiteral("aiff")},
                                 {Key(u"4"), QStringLiteral("protected")},
                                 {Key(u"5"), QStringLiteral("wav")}}));
}

/// Files whose path is their size; any other path leads nowhere.
std::optional<qint64> sizeByName(const QString &path) {
  bool isNumber = false;
  const qint64 size = path.toLongLong(&isNumber);
  return isNumber ? std::optional(size) : std::nullopt;
}

struct InfoCase {
  const char *what;
  Group group;
  std::vector<qint32> criteria;
  qsizetype row;
  std::optional<qint32> criterion = {};
  qint32 score = 0;
};

TEST(MarkChoice, TheCriteriaNarrowTheRowsOfTheInformationDown) {
  const Entries full = {{keys::Name, QStringLiteral("n")},
                        {keys::Artist, QStringLiteral("a")},
                        {keys::Album, QStringLiteral("b")},
                        {keys::AlbumArtist, QStringLiteral("c")},
                        {keys::Composer, QStringLiteral("d")},
                        {keys::Genre, QStringLiteral("e")},
                        {keys::TrackNumber, 1},
                        {keys::TrackCount, 1},
                        {keys::Year, 1},
                        {keys::BPM, 1},
                        {keys::Rating, 1},
                        {keys::AlbumRating, 1},
                        {keys::ArtworkCount, 1}};
  const Entries hollow = {{keys::Name, QString()}, {keys::Artist, 7},     {keys::Year, 0},
                          {keys::BPM, -1},         {keys::PlayCount, 99}, {keys::Kind, QStringLiteral("x")}};
  const InfoCase cases[] = {
      {"no criteria", rowsWith(keys::PlayCount, {5, 1}), {}, 1},
      {"a tie of all", rowsWith(keys::PlayCount, {4, 4}), {1}, 1},
      {"most played", rowsWith(keys::PlayCount, {3, 9, 4}), {1}, 1, 1, 9},
      {"only the tied rows are asked on",
       {{{keys::PlayCount, 8}, {keys::Rating, 40}},
        {{keys::PlayCount, 8}, {keys::Rating, 20}},
        {{keys::PlayCount, 1}, {keys::Rating, 100}}},
       {1, 7},
       0,
       7,
       40},
      {"a tie to the end takes the last row, though it was out",
       rowsWith(keys::PlayCount, {8, 8, 1}),
       {1, 7, 0},
       2},
      {"most complete", {hollow, full, hollow}, {0}, 1, 0, 13},
      {"nothing filled, yet fuller than nothing", {{{keys::BPM, 1}}, hollow}, {0}, 0, 0, 1},
      {"played last, beyond 32 bits",
       rowsWith(keys::PlayDate, {Q_INT64_C(3500000000), {}, Q_INT64_C(3600000000)}),
       {2},
       2,
       2,
       -694967296},
      {"never played", rowsWith(keys::PlayDate, {{}, 0}), {2}, 1},
      {"oldest year", rowsWith(keys::Year, {1990, 1970, 1500}), {3}, 1, 3, 8030},
      {"newest year", rowsWith(keys::Year, {1501, 1500}), {4}, 0, 4, 1501},
      {"no year counts", rowsWith(keys::Year, {1500, 0, -5}), {3, 4}, 2},
      {"added first", rowsWith(keys::DateAdded, {Date{5e8}, Date{4e8}}), {5}, 1, 5, -399000000},
      {"added last", rowsWith(keys::DateAdded, {Date{5e8}, Date{4e8}}), {6}, 0, 6, 500000000},
      {"added in one go", rowsWith(keys::DateAdded, {Date{5e8 + 15}, Date{5e8}}), {6, 5}, 1},
      {"a minute apart", rowsWith(keys::DateAdded, {Date{5e8 + 64}, Date{5e8}}), {6}, 0, 6, 500000064},
      {"no date", rowsWith(keys::DateAdded, {{}, Date{1}}), {5}, 0, 5, 1000000},
      {"a text is no date",
       rowsWith(keys::DateAdded, {QStringLiteral("2001"), Date{-8.5}}),
       {5},
       1,
       5,
       1000008},
      {"before 1904", rowsWith(keys::DateAdded, {Date{-3e9}, Date{-1e6}}), {5}, 0, 5, kLargest},
      {"far ahead", rowsWith(keys::DateAdded, {Date{1.3e9}, Date{kInfinity}}), {6}, 1, 6, kLargest},
      {"for ever ago", rowsWith(keys::DateAdded, {Date{-kInfinity}, Date{1e300}}), {5}, 0, 5, kLargest},
      {"no moment at all", rowsWith(keys::DateAdded, {Date{-1}, Date{std::nan("")}}), {6}, 1, 6, 0},
      {"an unknown criterion is passed", rowsWith(keys::Rating, {60, 20}), {99, -1, 7}, 0, 7, 60},
      {"numbers of any make",
       rowsWith(keys::PlayCount, {Q_INT64_C(4294967301), QStringLiteral(" 12 times"), 7.9, Date{99}}),
       {1},
       1,
       1,
       12},
      {"a single row", rowsWith(keys::Rating, {{}}), {7}, 0, 7, 0},
  };
  for (const InfoCase &example : cases) {
    AutomarkRules rules;
    rules.preferInfoTypes = example.criteria;
    const GroupMarks marks = chooseMarks(rowsOf(example.group), rules, kinds(), sizeByName);
    EXPECT_EQ(marks.infoRow, example.row) << example.what;
    EXPECT_EQ(marks.infoCriterion, example.criterion) << example.what;
    EXPECT_EQ(marks.infoScore, example.score) << example.what;
  }
}

struct AudioCase {
  const char *what;
  Group group;
  qint32 criterion, wantedBitRate, preferredKind;
  qsizetype row;
  qint32 score;
  /// By these the row of the information is chosen first.
  std::vector<qint32> infoCriteria = {};
};

Entries file(qint64 bitRate, const char *kind, const char *path = "") {
  return {
      {keys::BitRate, bitRate}, {keys::Kind, QString::fromUtf8(kind)}, {keys::Path, QString::fromUtf8(path)}};
}

TEST(MarkChoice, TheAudioRowScoresBestByTheCriterionThePreferredKindAndTheDisk) {
  const Group rated = {{{keys::Rating, 80}, {keys::BitRate, 320}}, {{keys::Rating, 100}, {keys::BitRate, 1}}};
  const Group equal = {file(128, ""), file(128, ""), file(128, "")};
  const Group tiedWithInfo = {{{keys::PlayCount, 1}, {keys::BitRate, 128}}, file(128, ""), file(96, "")};
  const Group ancient = {{{keys::PlayCount, 1}, {keys::DateAdded, Date{-3e9}}},
                         {{keys::DateAdded, Date{-4e9}}}};
  const AudioCase cases[] = {
      {"best bit rate", {file(256, ""), file(128, "")}, 0, 0, -1, 0, 256},
      {"an unknown criterion is quality", {file(256, ""), file(128, "")}, 7, 0, -1, 0, 256},
      {"lossless", {file(900, "Apple Lossless audio file"), file(4000, "AAC")}, 0, 0, -1, 0, 5900},
      {"AIFF, whatever its letters", {file(900, "AIFF audio file"), file(4000, "AAC")}, -3, 0, -1, 0, 5900},
      {"kind 1 a step below", {file(250, "AAC"), file(256, "MPEG audio file")}, 0, 0, -1, 0, 250},
      {"lowest quality", {file(1, "WAV"), file(96, "MPEG"), file(65, "")}, 1, 0, -1, 1, 19936},
      {"best rated", rated, 2, 0, -1, 1, 100001},
      {"longest",
       {{{keys::TotalTime, 200009}, {keys::BitRate, 128}}, {{keys::TotalTime, 199999}, {keys::BitRate, 128}}},
       3,
       0,
       -1,
       0,
       20128},
      {"reaches the bit rate", {file(128, ""), file(192, ""), file(256, "")}, 4, 192, -1, 1, 5000},
      {"nearest above", {file(128, ""), file(320, ""), file(256, "")}, 4, 192, -1, 2, 4936},
      {"nearest below", {file(96, ""), file(128, ""), file(64, "")}, 4, 192, -1, 1, -64},
      {"wraps", {file(1, ""), file(kSmallest, "")}, 4, kLargest, -1, 1, 1},
      {"rating wraps", rowsWith(keys::Rating, {3000000, 0}), 2, 0, -1, 1, 0},
      {"added first", rowsWith(keys::DateAdded, {Date{4e8}, Date{5e8}}), 5, 0, -1, 0, -399000000},
      {"added last", rowsWith(keys::DateAdded, {Date{5e8}, {}}), 6, 0, -1, 0, 500000000},
      {"the row of the information stands where nothing scores", ancient, 6, 0, -1, 0, kSmallest, {1}},
      {"the last of equals", equal, 0, 0, -1, 2, 128},
      {"the row of the information wins ties", tiedWithInfo, 0, 0, -1, 0, 128, {1}},
      {"preferred kind", {file(64, "AAC"), file(320, "MPEG")}, 0, 0, 0, 0, 1000064},
      {"unprotected kinds", {file(64, "AAC"), file(320, "protected"), file(999, "?")}, 0, 0, 6, 0, 1000064},
      {"a kind below 0 is none", {file(64, "?"), file(320, "?")}, 0, 0, -1, 1, 320},
      {"a preferred kind counts under every criterion",
       {file(64, "AAC"), file(192, "")},
       4,
       192,
       0,
       0,
       999872},
      {"a small file", {file(320, "", "99999"), file(64, "", "100000")}, 0, 0, -1, 1, 64},
      {"a file that is gone", {file(320, "AAC", "gone"), file(64, "MPEG", "200000")}, 0, 0, 0, 1, 32},
      {"all unusable", {file(320, "", "gone"), file(64, "", "0")}, 0, 0, -1, 1, -kLargest},
      {"unusable is more than nothing",
       {file(1, "", "gone"), {{keys::DateAdded, Date{-4e9}}}},
       6,
       0,
       -1,
       0,
       -kLargest},
      {"no path", {file(64, ""), file(320, "", "gone")}, 0, 0, -1, 0, 64},
      {"a size that is not known", {file(64, "", "-1"), file(32, "", "500000")}, 0, 0, -1, 0, 64},
  };
  for (const AudioCase &example : cases) {
    const AutomarkRules rules{example.infoCriteria, example.criterion, example.wantedBitRate,
                              example.preferredKind};
    const GroupMarks marks = chooseMarks(rowsOf(example.group), rules, kinds(), sizeByName);
    EXPECT_EQ(marks.audioRow, example.row) << example.what;
    EXPECT_EQ(marks.audioScore, example.score) << example.what;
  }
}

TEST(MarkChoice, WithoutKindsNoFileIsPreferred) {
  const AutomarkRules rules{{}, 0, 0, 6};
  const auto rows = rowsOf({file(100, "Apple Lossless"), file(101, "MPEG"), file(99, "aac")});
  const GroupMarks marks = chooseMarks(rows, rules, FileKinds(Dictionary()), sizeByName);
  EXPECT_EQ(marks.audioRow, 1);
  EXPECT_EQ(marks.audioScore, 101);
}

TEST(MarkChoice, OddSettingsReadAsTheNumbersTheyBeginWith) {
  const Array odd = Array::make();
  for (const Value &value : {Value(QStringLiteral("7")), Value(3), Value(QStringLiteral("rating")),
                             Value(QStringLiteral("99999999999")), Value(Date{5}), Value(2.9)}) {
    odd.append(value);
  }
  const Dictionary settings = dictionaryOf({{Key(u"preferInfoTypes"), odd},
                                            {Key(u"preferAudioData15"), QStringLiteral("4th")},
                                            {Key(u"preferAudioFileBitRate"), -1e30},
                                            {Key(u"preferAudioFileTypeNumber"), 3}});
  AutomarkRules rules = AutomarkRules::fromSettings(settings);
  EXPECT_EQ(rules.preferInfoTypes, (std::vector<qint32>{7, 3, 0, kLargest, 2}));
  EXPECT_EQ(rules.preferAudioData15, 4);
  EXPECT_EQ(rules.preferAudioFileBitRate, kSmallest);
  EXPECT_EQ(rules.preferredKind, -1);
  settings.set(Key(u"preferAudioFileType"), true);
  settings.set(Key(u"preferInfoTypes"), QStringLiteral("1"));
  rules = AutomarkRules::fromSettings(settings);
  EXPECT_TRUE(rules.preferInfoTypes.empty());
  EXPECT_EQ(rules.preferredKind, 3);
}

}  // namespace
