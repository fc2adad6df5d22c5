#include "app/library/PropertyListReader.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/qt/LibplistPropertyList.h"
#include "support/Format.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

Key key(const char *text) {
  return Key(QString::fromUtf8(text));
}

class PropertyListReader : public TestPlatform {
 protected:
  Value read(const QByteArray &bytes, bool systemFirst = false) {
    error.clear();
    return BMUtility::mutablePropertyListFromDataTrySystemFirstErrorDescription(bytes, systemFirst, &error,
                                                                                &counts);
  }
  /// The value under "k" of `<dict><key>k</key>` + element + `</dict>`.
  Value element(const QByteArray &text) {
    return read("<dict><key>k</key>" + text + "</dict>").toDictionary().value(key("k"));
  }
  QString inWords(const QByteArray &bytes) { return description(read(bytes)); }

  QString error;
  PropertyListCounts counts;
};

TEST_F(PropertyListReader, LeavesAreReadAsTold) {
  const Date noon = Date::fromCivil(2008, 2, 29, 12, 0, 0);
  const struct {
    const char *xml;
    Value expected;
  } cases[] = {
      {"<string>Abba</string>", QStringLiteral("Abba")},
      {"<string> a\n\tb </string>", QStringLiteral(" a\n\tb ")},
      {"<string></string>", {}},
      {"<string>R&#38;B &amp; &lt;i&gt;</string>", QStringLiteral("R&B & <i>")},
      {"<string>caf\xC3\xA9 \xF0\x9F\x8E\xB5</string>", QString::fromUtf8("caf\xC3\xA9 \xF0\x9F\x8E\xB5")},
      {"<string>\xEF\xBB\xBFx</string>", QStringLiteral("\uFEFFx")},
      {"<string>cut</string", QStringLiteral("cut")},
      {"<string a=\"b\">x</string>", {}},
      {"<integer></integer>", 0},
      {"<integer>12abc</integer>", 12},
      {"<integer> \n-7</integer>", -7},
      {"<integer>--7</integer>", 0},
      {"<integer>&#49;2</integer>", 12},
      {"<integer>2147483648</integer>", std::numeric_limits<qint32>::max()},
      {"<integer>-99999999999999999999999</integer>", std::numeric_limits<qint32>::min()},
      {"<integer>123456789012345678901234567890</integer>", std::numeric_limits<qint32>::max()},
      {"<true/>", true},
      {"<false/>", false},
      {"<true></true>", {}},
      {"<date>2008-02-29T12:00:00Z</date>", noon},
      {"<date>2008/02/29 12:00:00+</date>", noon},
      {"<date>2008-02-30T12:00:00Z</date>", Date::fromCivil(2008, 3, 1, 12, 0, 0)},
      {"<date>2008-02-28T24:00:00Z</date>", Date::fromCivil(2008, 2, 29, 0, 0, 0)},
      {"<date>2008-2-29T12:0:0Z</date>", noon},
      {"<date>2008-13-29T12:00:00Z</date>", {}},
      {"<date>yesterday</date>", {}},
      {"<date></date>", {}},
      {"<real>1.5</real>", {}},
      {"<data>AAAA</data>", {}},
      {"<dict/>", {}},
  };
  for (const auto &expected : cases) {
    const Value found = element(expected.xml);
    EXPECT_TRUE(isEqual(found, expected.expected))
        << expected.xml << " gave " << qPrintable(description(found));
    EXPECT_EQ(found.type(), expected.expected.type()) << expected.xml;
    EXPECT_EQ(error, QString()) << expected.xml;
  }
}

TEST_F(PropertyListReader, ShapesThatAreNoPropertyListStillGiveWhatTheyHold) {
  const struct {
    const char *xml, *sameAs;
  } cases[] = {
      {"<dict><key>a</key><dict><key>b</key><true/></dict><key>c</key><true/></dict>",
       "<dict><key>a</key><dict><key>b</key><true/></dict><key>c</key><true/></dict></plist>"},
      // a document cut in a container, in a tag and in a text
      {"<dict><key>a</key><array><true/><false/>", "<dict><key>a</key><array><true/><false/></array></dict>"},
      {"<dict><key>a</key><true/><key>b</key><str", "<dict><key>a</key><true/></dict>"},
      {"<dict><key>a</key><string>text", "<dict><key>a</key><string>text</string></dict>"},
      // the root is never closed, and any closing tag closes
      {"<dict></dict></dict></array><key>a</key><true/>", "<dict><key>a</key><true/></dict>"},
      {"<array><dict><key>a</key><true/></array><false/></dict>",
       "<array><dict><key>a</key><true/></dict><false/></array>"},
      // a key serves until the next one; without one there is no place
      {"<dict><key>a</key><dict><true/></dict></dict>",
       "<dict><key>a</key><dict><key>a</key><true/></dict></dict>"},
      {"<dict><true/><dict><true/></dict><key>a</key><key></key><true/></dict>", "<dict> </dict>"},
      {"<dict><key>a</key><integer>1</integer><key>b</key><true/><key>a</key><integer>2</integer></dict>",
       "<dict><key>a</key><integer>2</integer><key>b</key><true/></dict>"},
      // a value before any container
      {"<string>x</string><array><true/></array>", "<array><true/></array>"},
  };
  for (const auto &expected : cases) {
    EXPECT_EQ(inWords(expected.xml), inWords(expected.sameAs)) << expected.xml;
    EXPECT_EQ(error, QString()) << expected.xml;
  }
}

TEST_F(PropertyListReader, EveryContainerIsMutable) {
  const Dictionary root = read("<dict><key>a</key><array><dict></dict></array></dict>").toDictionary();
  const Array list = root.value(key("a")).toArray();
  EXPECT_TRUE(root.isMutable() && list.isMutable() && list.at(0).toDictionary().isMutable());
}

TEST_F(PropertyListReader, BytesThatAreNoTextAreNumberedAndTheRestSurvives) {
  const Array list =
      read("<array><string>\xFF</string>\xFE<string>ok</string><string>\xFF</string></array>").toArray();
  ASSERT_EQ(list.size(), 3);
  EXPECT_EQ(list.at(0).toText(), QStringLiteral("[NON-UTF8-1]"));
  EXPECT_EQ(list.at(1).toText(), QStringLiteral("ok"));
  EXPECT_EQ(list.at(2).toText(), QStringLiteral("[NON-UTF8-3]"));
  EXPECT_EQ(counts.values, 4);
  EXPECT_EQ(counts.undecodable, 3);
  EXPECT_EQ(error, QString());
}

TEST_F(PropertyListReader, ATagThatIsNoAsciiEndsTheReadingAndKeepsWhatCameBefore) {
  const Value root = read("<dict><key>a</key><true/><stri\xC3\xA9ng>x</string><key>b</key><true/></dict>");
  EXPECT_EQ(error, QStringLiteral("invalid tag @ 25"));
  EXPECT_EQ(description(root), inWords("<dict><key>a</key><true/></dict>"));
  read("<array><d\xC3");
  EXPECT_EQ(error, QStringLiteral("invalid tag @ 7"));
}

TEST_F(PropertyListReader, TooFewBytesAreNothingAndNoError) {
  EXPECT_TRUE(read("<dict").isNull());
  EXPECT_TRUE(read("").isNull());
  EXPECT_EQ(error, QString());
  EXPECT_TRUE(read("no tags at all").isNull());
  EXPECT_EQ(error, QString());
}

TEST_F(PropertyListReader, TheSystemsParserKeepsLargeNumbersAndOurOwnOverridesItsRefusal) {
  const QByteArray whole =
      "<plist version=\"1.0\"><dict><key>k</key><integer>5000000000</integer></dict></plist>";
  EXPECT_EQ(read(whole, true).toDictionary().value(key("k")).toInteger(), 5000000000);
  EXPECT_FALSE(counts.isManual);
  EXPECT_TRUE(logContains(QStringLiteral("[mutPListFrom] sys fin ")));
  EXPECT_EQ(read(whole.chopped(20), true).toDictionary().value(key("k")).toInteger(), 2147483647);
  EXPECT_TRUE(counts.isManual);
  EXPECT_EQ(error, QString());
  EXPECT_TRUE(logContains(QStringLiteral("mutPlistFrom manual success after sys fail \"")));
}

TEST_F(PropertyListReader, BinaryListsGoToTheSystemsParserUnasked) {
  QString failure;
  const Dictionary made = Dictionary::make();
  made.set(key("k"), qint64(5000000000));
  const QByteArray binary = propertyLists->write(made, SystemPropertyList::Format::Binary, &failure);
  EXPECT_TRUE(isEqual(read(binary), made));
  EXPECT_TRUE(read(binary.chopped(4)).isNull());
  EXPECT_TRUE(counts.isManual);
}

TEST_F(PropertyListReader, TwoRefusalsAreJoinedInOneText) {
  read("<plist><dict><key>k</key><tr\xFFue/>", true);
  EXPECT_TRUE(error.endsWith(QStringLiteral(" (manual: invalid tag @ 25)"))) << qPrintable(error);
  EXPECT_TRUE(logContains(QStringLiteral("mutPlistFrom failure \"") + error));
}

TEST_F(PropertyListReader, TheLogTellsSizesAndCounts) {
  read("<array> <string>a</string> </array>");
  EXPECT_TRUE(logContains(QStringLiteral("[mutPListFrom] 35 bytes sysFirst:0")));
  EXPECT_TRUE(logContains(QStringLiteral("secs, 3 values, 0 UTF8 errors)")));
  read("<array>" + QByteArray(100000, ' '));
  EXPECT_TRUE(logContains(QStringLiteral("[mutPListFrom] 100007 bytes (100.0KB) sysFirst:0")));
}

TEST_F(PropertyListReader, DepthCostsNoCallStack) {
  constexpr int kDeep = 200000;
  for (const char *tag : {"<array>", "<dict><key>k</key>"}) {
    Value level = read(QByteArray(tag).repeated(kDeep));
    int depth = 0;
    for (; level.isContainer(); ++depth) {
      const bool isArray = level.type() == Value::Type::Array;
      level = Value(isArray ? level.toArray().at(0) : level.toDictionary().value(key("k")));
    }
    EXPECT_EQ(depth, kDeep) << tag;
  }
}

TEST_F(PropertyListReader, LargeDictionariesKeepOrderAndTheLastOfEqualKeys) {
  QByteArray xml = "<dict>";
  for (int number = 0; number < 300; ++number) {
    xml += "<key>" + QByteArray::number(number % 200) + "</key><dict><key>n</key><integer>" +
           QByteArray::number(number) + "</integer></dict>";
  }
  const Dictionary root = read(xml + "</dict>").toDictionary();
  ASSERT_EQ(root.size(), 200);
  int place = 0;
  for (const DictionaryEntry &entry : root) {
    EXPECT_EQ(entry.key.text().toInt(), place);
    EXPECT_EQ(entry.value.toDictionary().value(key("n")).toInteger(), place < 100 ? place + 200 : place);
    ++place;
  }
}

// What is remembered of earlier texts and keys must never answer for others.
TEST_F(PropertyListReader, RepeatedTextsAreSharedAndDifferentOnesStayApart) {
  QByteArray xml = "<array>";
  for (int number = 0; number < 5000; ++number) {
    xml += "<dict><key>Kind</key><string>MPEG audio file</string><key>Name</key><string>song " +
           QByteArray::number(number) + "</string></dict>";
  }
  const Array list = read(xml).toArray();
  ASSERT_EQ(list.size(), 5000);
  int shared = 0;
  for (int number = 0; number < 5000; ++number) {
    const Dictionary track = list.at(number).toDictionary();
    ASSERT_EQ(track.value(key("Name")).toText(), QStringLiteral("song %1").arg(number));
    const QString &kind = track.value(key("Kind")).toText();
    ASSERT_EQ(kind, QStringLiteral("MPEG audio file"));
    shared += kind.constData() == list.at(0).toDictionary().value(key("Kind")).toText().constData();
  }
  EXPECT_GT(shared, 4900);
}

// A library cut at any byte gives a beginning of the whole one, without an error.
TEST_F(PropertyListReader, ACutAtAnyByteIsNoError) {
  const QByteArray whole =
      "<?xml version=\"1.0\"?><plist><dict><key>Tracks</key><dict><key>1</key><dict><key>Name</key>"
      "<string>caf\xC3\xA9 &amp; bar</string><key>Year</key><integer>1999</integer><key>Added</key>"
      "<date>2008-02-29T12:00:00Z</date></dict></dict><key>Playlists</key><array><true/></array></dict></"
      "plist>";
  for (qsizetype size = 6; size <= whole.size(); ++size) {
    read(whole.first(size));
    ASSERT_EQ(error, QString()) << size;
  }
}

}  // namespace
