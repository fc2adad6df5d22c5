#pragma once

#include <QByteArray>
#include <QString>
#include <variant>

#include "values/Array.h"
#include "values/Date.h"
#include "values/Dictionary.h"

/// One property-list value: nothing, a boolean, a whole number, a real number, a text (UTF-16 code units), a
/// date, bytes, or a reference to an `Array` or a `Dictionary`. Copies of leaves share nothing that can change;
/// copies of a reference name the same container.
class Value {
 public:
  /// In the order of comparison between values of different types.
  enum class Type : unsigned char { Null, Boolean, Integer, Real, Text, Date, Data, Array, Dictionary };

  Value() = default;
  Value(bool value) : held(value) {}
  Value(int value) : held(qint64(value)) {}
  Value(qint64 value) : held(value) {}
  Value(double value) : held(value) {}
  Value(QString value) : held(std::move(value)) {}
  Value(::Date value) : held(value) {}
  Value(QByteArray value) : held(std::move(value)) {}
  /// A reference to no container makes the null value.
  Value(::Array value);
  Value(::Dictionary value);
  Value(const char *) = delete;

  Type type() const { return Type(held.index()); }
  bool isNull() const { return type() == Type::Null; }
  bool isText() const { return type() == Type::Text; }
  /// True for booleans, whole and real numbers.
  bool isNumber() const { return type() >= Type::Boolean && type() <= Type::Real; }
  bool isContainer() const { return type() >= Type::Array; }

  /// A number's truth; a text is true if it starts with Y, y, T, t or a digit 1 to 9 behind blanks, a sign and
  /// zeros. Everything else is false.
  bool toBool() const;
  /// A number, truncated and saturating; a text by its leading digits; everything else 0.
  qint64 toInteger() const;
  /// A number; a text by its leading number; everything else 0.
  double toDouble() const;
  /// The text; the empty text for every other type.
  const QString &toText() const;
  /// The date, or null for every other type.
  const ::Date *toDate() const { return std::get_if<::Date>(&held); }
  /// The bytes; no bytes for every other type.
  QByteArray toData() const;
  /// The container; a reference to none for every other type.
  const ::Array &toArray() const;
  const ::Dictionary &toDictionary() const;

 private:
  std::variant<std::monostate, bool, qint64, double, QString, ::Date, QByteArray, ::Array, ::Dictionary> held;
};

static_assert(sizeof(Value) <= 32);

/// One key of a dictionary with its value.
struct DictionaryEntry {
  Key key;
  Value value;
};

/// Equality of whole trees: the same types and contents, dictionaries in any order of keys. Booleans and whole
/// and real numbers are equal by worth. Does not recurse, however deep the trees are.
bool isEqual(const Value &a, const Value &b);

/// The order of two leaves: nothing before everything, numbers by worth, texts by code units, dates by time,
/// data by bytes, other types by type. Two containers of one type rank alike. Negative, 0 or positive.
int compare(const Value &a, const Value &b);

/// A copy of a whole tree that shares nothing observable with it; each container is mutable if its source is.
/// Members that are nothing are left out of arrays, each told to `onMissing` as (index, size of the array).
/// Does not recurse; a tree of plain containers costs a reference for each.
Value copyTree(const Value &source, const std::function<void(qsizetype, qsizetype)> &onMissing = {});
