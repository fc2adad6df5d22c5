#include <gtest/gtest.h>

#include <limits>

#include "platform/keeper/RecordCodec.h"
#include "values/Keys.h"

namespace {

Dictionary oddRecord() {
  const Dictionary made = Dictionary::make();
  const Value values[] = {true,
                          false,
                          0,
                          -1,
                          std::numeric_limits<qint64>::min(),
                          std::numeric_limits<qint64>::max(),
                          4294967296LL,
                          0.1,
                          -std::numeric_limits<double>::infinity(),
                          QString(QLatin1String("")),
                          QStringLiteral("caf\u00e9"),
                          QStringLiteral("\u6771\u4eac \U0001F3B5"),
                          QString(QChar(0xD800)),
                          Date{-0.25},
                          QByteArray("\0\xff<", 3),
                          QByteArray(),
                          Array::make(),
                          Dictionary::make()};
  const Array list = Array::make();
  int number = 0;
  for (const Value &value : values) {
    made.set(Key(QStringLiteral("k%1").arg(number++)), value);
    list.append(value);
  }
  const Dictionary inner = Dictionary::make();
  inner.set(keys::Name, list);
  made.set(Key(u"inner"), inner);
  made.set(keys::Name, QStringLiteral("last"));
  return made;
}

QList<QString> keyTexts(const Dictionary &dictionary) {
  QList<QString> texts;
  for (const DictionaryEntry &entry : dictionary) texts.append(entry.key.text());
  return texts;
}

}  // namespace

TEST(RecordCodec, EveryTypeComesBackExactlyAndInOrder) {
  RecordKeys keys_;
  const Dictionary record = oddRecord();
  const QByteArray bytes = encodeRecord(record, keys_);
  const Dictionary back = decodeRecord(bytes, keys_);
  EXPECT_TRUE(isEqual(record, back));
  EXPECT_EQ(keyTexts(record), keyTexts(back));
  for (const DictionaryEntry &entry : record) {
    const Value one = valueInRecord(bytes, entry.key, keys_);
    EXPECT_EQ(one.type(), entry.value.type());
    EXPECT_TRUE(isEqual(one, entry.value));
  }
  EXPECT_TRUE(valueInRecord(bytes, Key(u"not in it"), keys_).isNull());
}

TEST(RecordCodec, ADamagedRecordGivesWhatStandsBeforeTheDamage) {
  RecordKeys keys_;
  const Dictionary record = oddRecord();
  const QByteArray bytes = encodeRecord(record, keys_);
  for (qsizetype size = 0; size < bytes.size(); ++size) {
    const Dictionary part = decodeRecord(bytes.first(size), keys_);
    ASSERT_LT(part.size(), record.size());
    for (const DictionaryEntry &entry : part) ASSERT_TRUE(isEqual(entry.value, record.value(entry.key)));
  }
  for (qsizetype at = 0; at < bytes.size(); ++at) {
    for (const char flip : {'\x01', '\x80', '\x7f'}) {
      QByteArray damaged = bytes;
      damaged[at] = char(damaged[at] ^ flip);
      decodeRecord(damaged, keys_);
      valueInRecord(damaged, keys::Name, keys_);
    }
  }
}

TEST(RecordCodec, ContainersNestedTooDeepDoNotExhaustTheStack) {
  RecordKeys keys_;
  Value deep = Array::make();
  for (int level = 0; level < 2000; ++level) {
    const Array outer = Array::make();
    outer.append(deep);
    deep = outer;
  }
  Value back = decodeValue(encodeValue(deep, keys_), keys_);
  int levels = 0;
  while (!back.toArray().isEmpty()) back = Value(back.toArray().at(0)), ++levels;
  EXPECT_EQ(levels, 500);
}
