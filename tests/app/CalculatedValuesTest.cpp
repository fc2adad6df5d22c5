#include "app/library/CalculatedValues.h"

#include <gtest/gtest.h>

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
  for (const auto &[key, value] : entries) {
    if (!value.isNull()) row.set(key, value);
  }
  return row;
}

/// "-" for nothing.
std::string shown(const Value &value) {
  return value.isNull() ? "-" : value.toText().toStdString();
}

}  // namespace

TEST(CalculatedValues, ShowStarsTimesNumbersAndTypes) {
  const CalculatedValues calculated = values();
  const auto expect = [&](Key key, std::initializer_list<std::pair<Key, Value>> row,
                          const QString &expected) {
    EXPECT_EQ(shown(calculated.calculatedValueForDictionaryKey(rowOf(row), key)), expected.toStdString())
        << key.text().toStdString();
  };
  // Single precision holds 20,000,001 as 20,000,000.
  const QString times = QStringLiteral(
      u"0=0:00 1=0:01 9000=0:09 9001=0:10 59001=1:00 61000=1:01 3599001=1:00:00 3661000=1:01:01 "
      u"4199000=1:09:59 4200000=1:10:00 20000001=5:33:20 -1000=0:0-1 "
      u"9223372036854775807=2562047909705:57:20");
  for (const QString &time : times.split(u' '))
    expect(keys::calc_humanTime, {{keys::TotalTime, time.section(u'=', 0, 0).toLongLong()}},
           time.section(u'=', 1));
  expect(keys::calc_humanTime, {{keys::TotalTime, u"61000 ms"_qs}}, u"1:01"_qs);
  for (const QString &rating :
       QStringLiteral(u"19= -19= -20=- 20=★ 119=★★★★★ 120=- 9223372036854775807=-").split(u' '))
    expect(keys::calc_rating, {{keys::Rating, rating.section(u'=', 0, 0).toLongLong()}},
           rating.section(u'=', 1));
  const QString types = QStringLiteral(
      u"Ogg Vorbis,128,Ogg 128|Ogg,,Ogg|aac file,,aac|Protected AAC file,128,Protected AAC 128|"
      u"Protected song,,Protected|AAC of a WAV,,AAC|MPEG-4 file,,MPEG-4|Datei; mpeg,320,MP3 320|Wave "
      u"WAV,,wav");
  for (const QString &type : types.split(u'|')) {
    const QString rate = type.section(u',', 1, 1);
    expect(keys::calc_type,
           {{keys::Kind, type.section(u',', 0, 0)},
            {keys::BitRate, rate.isEmpty() ? Value() : Value(rate.toInt())}},
           type.section(u',', 2));
  }
  expect(keys::calc_type, {{keys::Kind, 7}, {keys::BitRate, 128}}, u"-"_qs);
  expect(keys::calc_type, {{keys::Kind, u""_qs}}, u"-"_qs);
  expect(keys::calc_trackOfTotal, {{keys::TrackCount, 12}}, u"-"_qs);
  expect(keys::calc_trackOfTotal, {{keys::TrackNumber, 3}}, u"3"_qs);
  expect(keys::calc_trackOfTotal, {{keys::TrackNumber, 3}, {keys::TrackCount, 12}}, u"3/12"_qs);
  expect(keys::calc_humanTime, {}, u"-"_qs);
  expect(keys::calc_rating, {}, u""_qs);
  expect(keys::calc_type, {}, u"-"_qs);
  expect(keys::calc_inconsistentName, {}, u"names"_qs);
  expect(Key(u"calc_other"), {}, u"-"_qs);
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
