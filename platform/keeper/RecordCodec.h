#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include "platform/keeper/RecordKeys.h"
#include "values/Value.h"

/// How a dictionary becomes the bytes of a record, and back: its entries in order, keys by number, every
/// value in its exact type. Each value tells its length, so that one key is read without the rest.
///
/// A record is a version byte and then entries: the key's number, a type byte, the payload. Numbers are
/// 7 bits a byte, lowest first; whole numbers are folded so that small negative ones are short; real numbers
/// and dates are 8 bytes, lowest first; texts and data have their length in bytes before them, a text being
/// Latin-1 where that can write it, else UTF-16; lists and dictionaries have their length in bytes before
/// their members. Containers nested deeper than 500 are written and read as empty ones.

/// The record of a dictionary; keys that have no number yet get one. A record of no dictionary is empty.
QByteArray encodeRecord(const Dictionary &dictionary, RecordKeys &keys);
/// The record of one value, for keeping a value of any type.
QByteArray encodeValue(const Value &value, RecordKeys &keys);

/// The dictionary of a record, every container in it mutable. Never fails: from a damaged record come the
/// entries that can be read before the damage, and keys without a number are left out.
Dictionary decodeRecord(QByteArrayView record, const RecordKeys &keys);
/// The value that `encodeValue` wrote; null if it is damaged.
Value decodeValue(QByteArrayView bytes, const RecordKeys &keys);

/// The value of one key; null if the record does not have it.
Value valueInRecord(QByteArrayView record, Key key, const RecordKeys &keys);

/// Walks a record's entries where they lie, without making a dictionary. The bytes must outlive it.
class RecordCursor {
 public:
  enum class Type : unsigned char {
    Null,
    False,
    True,
    Integer,
    Real,
    Latin1,
    Utf16,
    Date,
    Data,
    Array,
    Dictionary
  };

  explicit RecordCursor(QByteArrayView record);
  /// Goes to the next entry; false at the end and at damage.
  bool next();

  quint32 keyNumber() const { return number; }
  Type type() const { return kind; }
  bool isText() const { return kind == Type::Latin1 || kind == Type::Utf16; }
  /// Each for its own type; 0 or empty for others. `boolean` is true for numbers other than 0 as well.
  bool boolean() const { return kind == Type::True || (kind == Type::Integer && bits != 0); }
  qint64 integer() const {
    return kind == Type::Integer ? qint64(bits) : kind == Type::Real ? qint64(real()) : 0;
  }
  /// A real number or a date's seconds.
  double real() const;
  QString text() const;
  /// The bytes of data, of a text as they are stored, or of a container's members.
  QByteArrayView payload() const { return bytes; }
  /// Any value, containers whole.
  Value value(const RecordKeys &keys) const;

  /// For the members of a list: entries without keys.
  static RecordCursor ofMembers(QByteArrayView members);
  /// For the entries of a dictionary within a record.
  static RecordCursor ofEntries(QByteArrayView entries);

 private:
  RecordCursor(QByteArrayView rest_, bool hasKeys_) : rest(rest_), hasKeys(hasKeys_) {}
  bool takeNumber(quint64 &number);
  bool takeBytes(QByteArrayView &bytes, quint64 length);
  bool takeValue();

  QByteArrayView rest;
  bool hasKeys = true;
  quint32 number = 0;
  Type kind = Type::Null;
  quint64 bits = 0;
  QByteArrayView bytes;
};
