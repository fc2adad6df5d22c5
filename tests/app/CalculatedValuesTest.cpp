#include "app/library/CalculatedValues.h"

#include <gtest/gtest.h>

#include <limits>

#include "app/library/RelatedValues.h"
#include "values/Keys.h"

namespace {

Array listOf(std::initializer_list<const char *> texts) {
  const Array list = Array::make();
  for (const char *text : texts) list.append(QString::fromUtf8(text));
  return list;
}

Dictionary kindsTable() {
  const Dictionary kinds = Dictionary::make();
  kinds.set(Key(u"0"), listOf({"MPEG-4", "AAC", ""}));
  kinds.set(Key(u"1"), QStringLiteral("MPEG"));
  kinds.set(Key(u"4"), listOf({"Protected", "Protected AAC"}));
  kinds.set(Key(u"5"), QStringLiteral("wav"));
  kinds.set(Key(u"9"), 7);
  return kinds;
}

CalculatedValues values() {
  const Dictionary resources = Dictionary::make();
  resources.set(keys::kinds, kindsTable());
  return CalculatedValues(resources, [](const Dictionary &) { return Value(QStringLiteral("names")); });
}

Dictionary rowOf(std::initializer_list<std::pair<Key, Value>> entries) {
  const Dictionary row = Dictionary::make();
  for (const auto &[key, value] : entries) row.set(key, value);
  return row;
}

const Value kHuge = std::numeric_limits<qint64>::max();

/// "-" for nothing.
std::string shown(const Value &value) {
  return value.isNull() ? "-" : value.toText().toStdString();
}

}  // namespace

TEST(CalculatedValues, ShowStarsTimesNumbersAndTypes) {
  const QString star(QChar(0x2605));
  struct Case {
    Key key;
    std::vector<std::pair<Key, Value>> row;
    QString expected;
  };
  const auto text = [](const char *utf8) { return QString::fromUtf8(utf8); };
  using keys::TotalTime, keys::Rating, keys::TrackNumber, keys::TrackCount, keys::Kind, keys::BitRate;
  const std::vector<Case> cases = {
      {keys::calc_humanTime, {{TotalTime, 0}}, text("0:00")},
      {keys::calc_humanTime, {{TotalTime, 1}}, text("0:01")},
      {keys::calc_humanTime, {{TotalTime, 9000}}, text("0:09")},
      {keys::calc_humanTime, {{TotalTime, 9001}}, text("0:10")},
      {keys::calc_humanTime, {{TotalTime, 59001}}, text("1:00")},
      {keys::calc_humanTime, {{TotalTime, 61000}}, text("1:01")},
      {keys::calc_humanTime, {{TotalTime, 3599001}}, text("1:00:00")},
      {keys::calc_humanTime, {{TotalTime, 3661000}}, text("1:01:01")},
      {keys::calc_humanTime, {{TotalTime, 4199000}}, text("1:09:59")},
      {keys::calc_humanTime, {{TotalTime, 4200000}}, text("1:10:00")},
      // Single precision holds 20,000,001 as 20,000,000.
      {keys::calc_humanTime, {{TotalTime, 20000001}}, text("5:33:20")},
      {keys::calc_humanTime, {{TotalTime, -1000}}, text("0:0-1")},
      {keys::calc_humanTime, {{TotalTime, kHuge}}, text("2562047909705:57:20")},
      {keys::calc_humanTime, {{TotalTime, text("61000 ms")}}, text("1:01")},
      {keys::calc_humanTime, {}, text("-")},
      {keys::calc_rating, {}, QString()},
      {keys::calc_rating, {{Rating, 19}}, QString()},
      {keys::calc_rating, {{Rating, -19}}, QString()},
      {keys::calc_rating, {{Rating, -20}}, text("-")},
      {keys::calc_rating, {{Rating, 20}}, star},
      {keys::calc_rating, {{Rating, 119}}, star.repeated(5)},
      {keys::calc_rating, {{Rating, 120}}, text("-")},
      {keys::calc_rating, {{Rating, kHuge}}, text("-")},
      {keys::calc_trackOfTotal, {{TrackCount, 12}}, text("-")},
      {keys::calc_trackOfTotal, {{TrackNumber, 3}}, text("3")},
      {keys::calc_trackOfTotal, {{TrackNumber, 3}, {TrackCount, 12}}, text("3/12")},
      {keys::calc_type, {}, text("-")},
      {keys::calc_type, {{Kind, 7}, {BitRate, 128}}, text("-")},
      {keys::calc_type, {{Kind, text("")}}, text("-")},
      {keys::calc_type, {{Kind, text("Ogg Vorbis")}, {BitRate, 128}}, text("Ogg 128")},
      {keys::calc_type, {{Kind, text("Ogg")}}, text("Ogg")},
      {keys::calc_type, {{Kind, text("aac file")}}, text("aac")},
      {keys::calc_type, {{Kind, text("Protected AAC file")}, {BitRate, 128}}, text("Protected AAC 128")},
      {keys::calc_type, {{Kind, text("Protected song")}}, text("Protected")},
      {keys::calc_type, {{Kind, text("AAC of a WAV")}}, text("AAC")},
      {keys::calc_type, {{Kind, text("MPEG-4 file")}}, text("MPEG-4")},
      {keys::calc_type, {{Kind, text("Datei, mpeg")}, {BitRate, 320}}, text("MP3 320")},
      {keys::calc_type, {{Kind, text("Wave WAV")}}, text("wav")},
      {keys::calc_inconsistentName, {}, text("names")},
      {Key(u"calc_other"), {}, text("-")},
  };
  const CalculatedValues calculated = values();
  for (const Case &expected : cases) {
    const Dictionary row = Dictionary::make();
    for (const auto &[key, value] : expected.row) row.set(key, value);
    const Value value = calculated.calculatedValueForDictionaryKey(row, expected.key);
    EXPECT_EQ(shown(value), expected.expected.toStdString()) << expected.key.text().toStdString();
  }
}

TEST(CalculatedValues, AreKeptInARowThatCanChangeEvenIfTheyAreMissing) {
  const CalculatedValues calculated = values();
  const Dictionary row = rowOf({{keys::TrackNumber, 3}, {keys::TrackCount, 12}, {keys::Rating, 40}});
  EXPECT_EQ(shown(calculated.calculatedValueForDictionaryKey(row, keys::calc_humanTime)), "-");
  EXPECT_EQ(shown(calculated.calculatedValueForDictionaryKey(row, keys::calc_humanTime)), "");
  calculated.calculatedValueForDictionaryKey(row, keys::calc_rating);
  row.set(keys::Rating, 100);
  EXPECT_EQ(calculated.calculatedValueForDictionaryKey(row, keys::calc_rating).toText().size(), 2);
  // Of two numbers the row keeps nothing.
  calculated.calculatedValueForDictionaryKey(row, keys::calc_trackOfTotal);
  EXPECT_FALSE(row.contains(keys::calc_trackOfTotal));
  row.set(keys::TrackCount, 13);
  EXPECT_EQ(shown(calculated.calculatedValueForDictionaryKey(row, keys::calc_trackOfTotal)), "3/13");

  const Dictionary fixed = rowOf({{keys::Rating, 20}});
  fixed.freeze();
  EXPECT_EQ(calculated.calculatedValueForDictionaryKey(fixed, keys::calc_rating).toText().size(), 1);
  EXPECT_EQ(fixed.size(), 1);
}

TEST(CalculatedValues, OfRelatedTracksHaveASimplerTypeAndKeysOfTheirOwn) {
  const auto typeOf = [](const char *kind) {
    const Dictionary track = rowOf({{keys::Kind, QString::fromUtf8(kind)}, {keys::BitRate, 128}});
    return shown(RelatedValues::calculatedValueForDictionaryKey(track, keys::type));
  };
  EXPECT_EQ(typeOf("MPEG-4 file"), "MP3 128");
  EXPECT_EQ(typeOf("Protected AAC file"), "Protected 128");
  EXPECT_EQ(typeOf("Old MPEG file"), "Old 128");
  EXPECT_EQ(typeOf(""), "-");

  const Dictionary track = rowOf({{keys::TotalTime, 61000}, {keys::TrackNumber, 3}, {keys::TrackCount, 12}});
  EXPECT_EQ(shown(RelatedValues::calculatedValueForDictionaryKey(track, keys::humanTime)), "1:01");
  EXPECT_EQ(shown(RelatedValues::calculatedValueForDictionaryKey(track, keys::trackOfTotal)), "3/12");
  RelatedValues::calculatedValueForDictionaryKey(track, keys::type);
  EXPECT_EQ(track.value(keys::humanTime).toText(), QStringLiteral("1:01"));
  EXPECT_FALSE(track.contains(keys::trackOfTotal) || track.contains(keys::calc_humanTime));
  EXPECT_TRUE(track.value(keys::type).isText());
}

TEST(CalculatedValues, AreRemovedFromCopiesAndWhatHoldsNoneStaysItself) {
  const auto cleaned = CalculatedValues::objectWithCalculatedValuesRemoved;
  const Dictionary clean = rowOf({{keys::Name, QStringLiteral("a")},
                                  {keys::humanTime, QStringLiteral("1:01")},
                                  {Key(u"calculated"), 1}});
  const Array member = listOf({"kept as it is"});
  const Dictionary dirty = rowOf({{keys::calc_rating, QStringLiteral("")}, {keys::inconSongs, member}});
  const Array rows = Array::make();
  for (const Value &row : {Value(clean), Value(dirty), Value(7)}) rows.append(row);

  const Array result = cleaned(rows).toArray();
  EXPECT_FALSE(result.isSame(rows));
  EXPECT_TRUE(result.isMutable());
  EXPECT_TRUE(result.at(0).toDictionary().isSame(clean));
  EXPECT_EQ(result.at(1).toDictionary().size(), 1);
  EXPECT_TRUE(result.at(1).toDictionary().isMutable());
  EXPECT_TRUE(result.at(1).toDictionary().value(keys::inconSongs).toArray().isSame(member));
  EXPECT_TRUE(rows.at(1).toDictionary().contains(keys::calc_rating));

  const Array outer = Array::make();
  outer.append(rows);
  outer.freeze();
  dirty.freeze();
  const Array outerResult = cleaned(outer).toArray();
  EXPECT_FALSE(outerResult.isMutable());
  EXPECT_FALSE(outerResult.at(0).toArray().at(1).toDictionary().isMutable());
  EXPECT_TRUE(cleaned(result).toArray().isSame(result));
  const Array emptyList = Array::make();
  const Dictionary emptyRow = Dictionary::make();
  EXPECT_TRUE(cleaned(emptyList).toArray().isSame(emptyList));
  EXPECT_TRUE(cleaned(emptyRow).toDictionary().isSame(emptyRow));
  EXPECT_EQ(cleaned(QStringLiteral("calc_")).toText(), QStringLiteral("calc_"));
}

TEST(FileKinds, LookThroughListsBeforeSinglePiecesAndFromTheEnd) {
  const FileKinds kinds(kindsTable());
  const std::pair<const char *, int> cases[] = {
      {"Protected AAC audio file", 4},
      {"AAC audio file", 0},
      {"MPEG-4 audio file", 0},
      {"MPEG audio file", 1},
      {"mpeg", 1},
      {"MPEG in a Wav", 5},
      {"aac", -1},
      {"7", -1},
      {"", -1},
      {"A-A-C", -1},
      {"aAc C", -1},
  };
  for (const auto &[kind, number] : cases) EXPECT_EQ(kinds.numberOf(QString::fromUtf8(kind)), number) << kind;
  EXPECT_EQ(FileKinds(Dictionary()).numberOf(QStringLiteral("AAC")), -1);
  EXPECT_EQ(kinds.matchOf(QStringLiteral("mpeg"))->key, QStringLiteral("1"));
}
