#include "platform/qt/LibplistPropertyList.h"

#include <gtest/gtest.h>

#include <bit>

namespace {

const LibplistPropertyList lists;

QByteArray xml(const QByteArray &inside) {
  return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0">)" + inside + "</plist>";
}

QByteArray bigEndian(quint64 number, int size) {
  QByteArray bytes;
  for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) bytes += char(number >> shift);
  return bytes;
}

/// A binary list of these objects, the first being the root, with four-byte offsets and references.
QByteArray binary(const QList<QByteArray> &objects) {
  QByteArray bytes = "bplist00", table;
  for (const QByteArray &object : objects) {
    table += bigEndian(quint64(bytes.size()), 4);
    bytes += object;
  }
  const quint64 place = quint64(bytes.size());
  return bytes + table + QByteArray(6, 0) + "\4\4" + bigEndian(quint64(objects.size()), 8) + bigEndian(0, 8) +
         bigEndian(place, 8);
}

/// An array object that names these others.
QByteArray arrayOf(const QList<int> &members) {
  QByteArray object(1, char(0xA0 | members.size()));
  for (const int member : members) object += bigEndian(quint64(member), 4);
  return object;
}

Dictionary everyType() {
  const Dictionary root = Dictionary::make();
  root.set(Key(u"text"), u"a <b> & \"c\" \u00e9\U0001F3B5"_qs);
  root.set(Key(u"empty"), u""_qs);
  root.set(Key(u"yes"), true);
  root.set(Key(u"negative"), qint64(-5));
  root.set(Key(u"largest"), std::numeric_limits<qint64>::max());
  root.set(Key(u"real"), 0.1);
  root.set(Key(u"small"), 1.25e-7);
  root.set(Key(u"date"), Date::fromCivil(2008, 2, 29, 12, 0, 1));
  root.set(Key(u"early"), Date::fromCivil(1990, 1, 1, 0, 0, 0));
  root.set(Key(u"data"), QByteArray("\0\1\xff", 3));
  const Array list = Array::make();
  list.append(Array::make());
  list.append(Dictionary::make());
  root.set(Key(u"list"), list);
  return root;
}

}  // namespace

TEST(PropertyList, EveryTypeSurvivesBothForms) {
  for (const auto format : {SystemPropertyList::Format::Xml, SystemPropertyList::Format::Binary}) {
    QString error;
    const QByteArray bytes = lists.write(everyType(), format, &error);
    ASSERT_FALSE(bytes.isEmpty()) << error.toStdString();
    const Value back = lists.parse(bytes, &error);
    for (const DictionaryEntry &entry : everyType()) {
      EXPECT_TRUE(isEqual(back.toDictionary().value(entry.key), entry.value))
          << entry.key.text().toStdString() << "\n"
          << bytes.toStdString();
    }
    EXPECT_TRUE(back.toDictionary().isMutable() &&
                back.toDictionary().value(Key(u"list")).toArray().isMutable());
  }
}

TEST(PropertyList, DatesBeyondThirtyTwoBitsKeepTheirDay) {
  for (const char *day :
       {"0001-06-01", "1890-06-01", "1932-12-13", "1933-01-01", "2069-06-01", "9999-12-31"}) {
    QString error;
    const QByteArray text = QByteArray(day) + "T01:02:03Z";
    const Value read = lists.parse(xml("<date>" + text + "</date>"), &error);
    ASSERT_TRUE(read.toDate()) << day;
    EXPECT_EQ(read.toDate()->toIsoText().toStdString(), text.toStdString());
  }
  for (const double seconds : {3.0e9 + 0.5, -5.0e9, 1.0e300, -2147483648.0}) {
    QString error;
    const Value read = lists.parse(binary({'\x33' + bigEndian(std::bit_cast<quint64>(seconds), 8)}), &error);
    ASSERT_TRUE(read.toDate()) << error.toStdString();
    EXPECT_EQ(read.toDate()->seconds, seconds);
  }
}

TEST(PropertyList, WhatTheFormatCannotHoldIsRefusedWhole) {
  Value deep = Array::make();
  for (int depth = 0; depth < 600; ++depth) {
    const Array outer = Array::make();
    outer.append(deep);
    deep = outer;
  }
  const Array hollow = Array::make();
  hollow.append(Value());
  for (const Value &value : {deep, Value(hollow), Value(QString(QChar(0)))}) {
    QString error;
    EXPECT_TRUE(lists.write(value, SystemPropertyList::Format::Xml, &error).isEmpty());
    EXPECT_FALSE(error.isEmpty());
  }
}

TEST(PropertyList, HostileXmlIsRefusedWithAReason) {
  const QByteArray open = QByteArray("<array>").repeated(100000);
  const QByteArray cases[] = {
      "",
      "nonsense",
      open,
      xml(open + QByteArray("</array>").repeated(100000)),
      xml(QByteArray("<dict><key>a</key>").repeated(100000)),
      xml("<array><!-- " + QByteArray("</array>").repeated(2000) + " -->" +
          QByteArray("<array >").repeated(2000)),
      xml("<![CDATA[>" + open + "]]>"),
      xml("<!-->" + open + "-->"),
      xml("<!--->" + open + "-->"),
      "<?>" + open + "?>",
      xml("<string>a\xff\xfe</string>"),
      xml(QByteArray("<string>a\0b</string>", 20)),
      "<!DOCTYPE plist [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\">]>" + xml("<string>&b;</string>"),
  };
  for (const QByteArray &bytes : cases) {
    QString error;
    EXPECT_TRUE(lists.parse(bytes, &error).isNull()) << bytes.left(200).toStdString();
    EXPECT_FALSE(error.isEmpty()) << bytes.left(200).toStdString();
  }
  QString error;
  const QByteArray allowed = QByteArray("<array>").repeated(500) + QByteArray("</array>").repeated(500);
  EXPECT_FALSE(lists.parse(xml("<!-- <array> <dict/> -->" + allowed), &error).isNull())
      << error.toStdString();
}

TEST(PropertyList, HostileBinaryIsRefusedWithAReason) {
  QList<QByteArray> chain, doubling;
  for (int index = 0; index < 100000; ++index) chain += arrayOf({index + 1});
  chain += QByteArray(1, 0x09);
  for (int index = 0; index < 40; ++index) doubling += arrayOf({index + 1, index + 1, index + 1});
  doubling += QByteArray(1, 0x09);
  const struct {
    const char *name;
    QByteArray bytes;
    QString reason;
  } cases[] = {
      {"deep", binary(chain), u"deeper"_qs},
      {"own circle", binary({arrayOf({0})}), u"itself"_qs},
      {"circle", binary({arrayOf({1}), arrayOf({2, 3}), QByteArray(1, 0x09), arrayOf({1})}), u"itself"_qs},
      {"unfolding", binary(doubling), u"unfolds"_qs},
      {"nowhere", binary({arrayOf({7})}), u"nowhere"_qs},
      {"too long", binary({QByteArray("\xaf\x13\x7f\xff\xff\xff\xff\xff\xff\xff", 10)}), u"outside"_qs},
      {"dictionary too long", binary({QByteArray("\xdf\x13\x80\0\0\0\0\0\0\0", 10)}), u"outside"_qs},
      {"no trailer", "bplist00", u"outside"_qs},
  };
  for (const auto &test : cases) {
    QString error;
    EXPECT_TRUE(lists.parse(test.bytes, &error).isNull()) << test.name;
    EXPECT_TRUE(error.contains(test.reason)) << test.name << ": " << error.toStdString();
  }
}

TEST(PropertyList, ACutOrFlippedFileNeverCrashes) {
  for (const auto format : {SystemPropertyList::Format::Xml, SystemPropertyList::Format::Binary}) {
    const QByteArray whole = lists.write(everyType(), format, nullptr);
    int refused = 0;
    for (qsizetype length = 0; length < whole.size(); ++length) {
      QString error;
      const Value value = lists.parse(whole.left(length), &error);
      if (value.isNull()) ++refused;
      EXPECT_EQ(value.isNull(), !error.isEmpty()) << length;
      for (const char bits : {char(0xff), char(0x10), char(0x01)}) {
        QByteArray flipped = whole;
        flipped[length] = char(flipped[length] ^ bits);
        (void)lists.parse(flipped, &error);
      }
    }
    EXPECT_GT(refused, whole.size() * 9 / 10);
  }
}

TEST(PropertyList, ASharedObjectIsNotTakenForACircle) {
  QString error;
  const Value value = lists.parse(binary({arrayOf({1, 1}), arrayOf({2}), QByteArray(1, 0x09)}), &error);
  EXPECT_EQ(value.toArray().size(), 2) << error.toStdString();
  EXPECT_TRUE(value.toArray().at(1).toArray().at(0).toBool());
}
