#include "platform/keeper/RecordCodec.h"

#include <QtEndian>
#include <bit>
#include <limits>

namespace {

constexpr char kRecordVersion = 1;
constexpr int kDeepest = 500;

using Type = RecordCursor::Type;

void putNumber(QByteArray &out, quint64 number) {
  while (number >= 0x80) {
    out.append(char(number | 0x80));
    number >>= 7;
  }
  out.append(char(number));
}

quint64 foldSign(qint64 number) {
  return (quint64(number) << 1) ^ quint64(number >> 63);
}

qint64 unfoldSign(quint64 folded) {
  return qint64(folded >> 1) ^ -qint64(folded & 1);
}

void putReal(QByteArray &out, Type type, double real) {
  out.append(char(type));
  char eight[8];
  qToLittleEndian(std::bit_cast<quint64>(real), eight);
  out.append(eight, sizeof eight);
}

void putBytes(QByteArray &out, Type type, QByteArrayView bytes) {
  out.append(char(type));
  putNumber(out, quint64(bytes.size()));
  out.append(bytes);
}

bool isLatin1(const QString &text) {
  char16_t all = 0;
  for (const QChar unit : text) all |= unit.unicode();
  return all < 0x100;
}

void putText(QByteArray &out, const QString &text) {
  if (isLatin1(text)) {
    out.append(char(Type::Latin1));
    putNumber(out, quint64(text.size()));
    const qsizetype start = out.size();
    out.resize(start + text.size());
    char *place = out.data() + start;
    for (const QChar unit : text) *place++ = char(unit.unicode());
    return;
  }
  QByteArray units(text.size() * 2, Qt::Uninitialized);
  qToLittleEndian<quint16>(text.utf16(), text.size(), units.data());
  putBytes(out, Type::Utf16, units);
}

void putValue(QByteArray &out, const Value &value, RecordKeys &keys, int depth);

void putEntries(QByteArray &out, const Dictionary &dictionary, RecordKeys &keys, int depth) {
  for (const DictionaryEntry &entry : dictionary) {
    putNumber(out, keys.numberOf(entry.key));
    putValue(out, entry.value, keys, depth);
  }
}

void putContainer(QByteArray &out, const Value &value, RecordKeys &keys, int depth) {
  const bool isArray = value.type() == Value::Type::Array;
  QByteArray members;
  if (depth < kDeepest && isArray) {
    for (const Value &member : value.toArray()) putValue(members, member, keys, depth + 1);
  } else if (depth < kDeepest) {
    putEntries(members, value.toDictionary(), keys, depth + 1);
  }
  putBytes(out, isArray ? Type::Array : Type::Dictionary, members);
}

void putValue(QByteArray &out, const Value &value, RecordKeys &keys, int depth) {
  switch (value.type()) {
    case Value::Type::Null:
      out.append(char(Type::Null));
      break;
    case Value::Type::Boolean:
      out.append(char(value.toBool() ? Type::True : Type::False));
      break;
    case Value::Type::Integer:
      out.append(char(Type::Integer));
      putNumber(out, foldSign(value.toInteger()));
      break;
    case Value::Type::Real:
      putReal(out, Type::Real, value.toDouble());
      break;
    case Value::Type::Text:
      putText(out, value.toText());
      break;
    case Value::Type::Date:
      putReal(out, Type::Date, value.toDate()->seconds);
      break;
    case Value::Type::Data:
      putBytes(out, Type::Data, value.toData());
      break;
    case Value::Type::Array:
    case Value::Type::Dictionary:
      putContainer(out, value, keys, depth);
      break;
  }
}

Value readValue(const RecordCursor &cursor, const RecordKeys &keys, int depth);

Dictionary readEntries(RecordCursor cursor, const RecordKeys &keys, int depth) {
  const Dictionary made = Dictionary::make();
  while (cursor.next()) {
    const Key key = keys.key(cursor.keyNumber());
    if (!key.isAbsent()) made.set(key, readValue(cursor, keys, depth));
  }
  return made;
}

Array readMembers(RecordCursor cursor, const RecordKeys &keys, int depth) {
  const Array made = Array::make();
  while (cursor.next()) made.append(readValue(cursor, keys, depth));
  return made;
}

Value readValue(const RecordCursor &cursor, const RecordKeys &keys, int depth) {
  switch (cursor.type()) {
    case Type::Null:
      return {};
    case Type::False:
      return false;
    case Type::True:
      return true;
    case Type::Integer:
      return cursor.integer();
    case Type::Real:
      return cursor.real();
    case Type::Latin1:
    case Type::Utf16:
      return cursor.text();
    case Type::Date:
      return Date{cursor.real()};
    case Type::Data:
      return cursor.payload().toByteArray();
    case Type::Array:
      if (depth >= kDeepest) return Array::make();
      return readMembers(RecordCursor::ofMembers(cursor.payload()), keys, depth + 1);
    case Type::Dictionary:
      if (depth >= kDeepest) return Dictionary::make();
      return readEntries(RecordCursor::ofEntries(cursor.payload()), keys, depth + 1);
  }
  return {};
}

}  // namespace

QByteArray encodeRecord(const Dictionary &dictionary, RecordKeys &keys) {
  if (dictionary.isNull()) return {};
  QByteArray out;
  out.reserve(1024);
  out.append(kRecordVersion);
  putEntries(out, dictionary, keys, 0);
  return out;
}

QByteArray encodeValue(const Value &value, RecordKeys &keys) {
  QByteArray out;
  putValue(out, value, keys, 0);
  return out;
}

Dictionary decodeRecord(QByteArrayView record, const RecordKeys &keys) {
  if (record.isEmpty()) return {};
  return readEntries(RecordCursor(record), keys, 0);
}

Value decodeValue(QByteArrayView bytes, const RecordKeys &keys) {
  RecordCursor cursor = RecordCursor::ofMembers(bytes);
  return cursor.next() ? cursor.value(keys) : Value();
}

Value valueInRecord(QByteArrayView record, Key key, const RecordKeys &keys) {
  const qint64 number = keys.find(key);
  if (number < 0) return {};
  RecordCursor cursor(record);
  while (cursor.next()) {
    if (cursor.keyNumber() == quint64(number)) return cursor.value(keys);
  }
  return {};
}

RecordCursor::RecordCursor(QByteArrayView record) {
  if (!record.isEmpty() && record.front() == kRecordVersion) rest = record.sliced(1);
}

RecordCursor RecordCursor::ofMembers(QByteArrayView members) {
  return RecordCursor(members, false);
}

RecordCursor RecordCursor::ofEntries(QByteArrayView entries) {
  return RecordCursor(entries, true);
}

bool RecordCursor::takeNumber(quint64 &taken) {
  taken = 0;
  for (int shift = 0, place = 0; shift < 64 && place < rest.size(); shift += 7, ++place) {
    const uchar byte = uchar(rest[place]);
    taken |= quint64(byte & 0x7F) << shift;
    if (byte < 0x80) {
      rest = rest.sliced(place + 1);
      return true;
    }
  }
  return false;
}

bool RecordCursor::takeBytes(QByteArrayView &taken, quint64 length) {
  if (length > quint64(rest.size())) return false;
  taken = rest.first(qsizetype(length));
  rest = rest.sliced(qsizetype(length));
  return true;
}

bool RecordCursor::takeValue() {
  if (rest.isEmpty() || uchar(rest.front()) > uchar(Type::Dictionary)) return false;
  kind = Type(rest.front());
  rest = rest.sliced(1);
  bits = 0;
  bytes = {};
  quint64 length = 0;
  switch (kind) {
    case Type::Null:
    case Type::False:
    case Type::True:
      return true;
    case Type::Integer:
      if (!takeNumber(bits)) return false;
      bits = quint64(unfoldSign(bits));
      return true;
    case Type::Real:
    case Type::Date:
      if (!takeBytes(bytes, 8)) return false;
      bits = qFromLittleEndian<quint64>(bytes.data());
      return true;
    default:
      return takeNumber(length) && takeBytes(bytes, length);
  }
}

bool RecordCursor::next() {
  quint64 key = 0;
  const bool taken = !rest.isEmpty() && (!hasKeys || takeNumber(key)) &&
                     key <= std::numeric_limits<quint32>::max() && takeValue();
  number = quint32(key);
  if (taken) return true;
  rest = {};
  kind = Type::Null;
  bits = 0;
  bytes = {};
  return false;
}

double RecordCursor::real() const {
  if (kind == Type::Integer) return double(qint64(bits));
  return kind == Type::Real || kind == Type::Date ? std::bit_cast<double>(bits) : 0.0;
}

QString RecordCursor::text() const {
  if (kind == Type::Latin1) return QString::fromLatin1(bytes);
  if (kind != Type::Utf16) return {};
  QString units(bytes.size() / 2, Qt::Uninitialized);
  qFromLittleEndian<quint16>(bytes.data(), units.size(), units.data());
  return units;
}

Value RecordCursor::value(const RecordKeys &keys) const {
  return readValue(*this, keys, 0);
}
