#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

#include "values/Date.h"

class ScriptObject;
struct ScriptReference;
class ScriptInstance;
class ScriptValue;

using ScriptObjectPtr = std::shared_ptr<ScriptObject>;
using ScriptListItems = std::vector<ScriptValue>;
/// Fields by name in lower case, in the order in which they came.
using ScriptRecordFields = std::vector<std::pair<QString, ScriptValue>>;

/// The word for an absent value, `missing value`.
struct ScriptMissing {};

/// A word that stands for one of a few choices ("playing", "none"), in lower case.
struct ScriptConstant {
  QString term;
};

/// The name of a class of things ("user playlist", "text"), in lower case.
struct ScriptClassName {
  QString term;
};

/// A file named by its path. An alias is one that was there when it was named.
struct ScriptFile {
  QString path;
  bool isAlias = false;
};

/// A value of the script language. Copies of lists, records and dates name the same one, as in the language;
/// copies of other leaves share nothing that can change. One thread.
class ScriptValue {
 public:
  /// In the order of the alternatives below.
  enum class Type {
    NoValue,
    Missing,
    Boolean,
    Integer,
    Real,
    Text,
    Date,
    File,
    Data,
    Constant,
    ClassName,
    List,
    Record,
    Object,
    Reference,
    Instance
  };

  ScriptValue() = default;
  ScriptValue(ScriptMissing missing) : held(missing) {}
  ScriptValue(bool value) : held(value) {}
  ScriptValue(int value) : held(qint64(value)) {}
  ScriptValue(qint64 value) : held(value) {}
  ScriptValue(double value) : held(value) {}
  ScriptValue(QString value) : held(std::move(value)) {}
  ScriptValue(::Date value) : held(std::make_shared<::Date>(value)) {}
  ScriptValue(ScriptFile value) : held(std::move(value)) {}
  ScriptValue(QByteArray value) : held(std::move(value)) {}
  ScriptValue(ScriptConstant value) : held(std::move(value)) {}
  ScriptValue(ScriptClassName value) : held(std::move(value)) {}
  /// A thing of the application; null is no value.
  ScriptValue(ScriptObjectPtr value);
  /// What the evaluator alone makes: an unresolved reference, a script object.
  ScriptValue(std::shared_ptr<const ScriptReference> value) : held(std::move(value)) {}
  ScriptValue(std::shared_ptr<ScriptInstance> value) : held(std::move(value)) {}
  ScriptValue(const char *) = delete;

  static ScriptValue missing() { return ScriptMissing{}; }
  static ScriptValue list(ScriptListItems items = {});
  static ScriptValue record(ScriptRecordFields fields = {});
  /// Lets go of values that may be nested as deeply as can be, level by level: ends of lists inside lists
  /// never become calls inside calls. Lists and records do so by themselves.
  static void release(ScriptListItems values);

  Type type() const { return Type(held.index()); }
  bool is(Type type_) const { return type() == type_; }
  bool isNumber() const { return is(Type::Integer) || is(Type::Real); }

  /// Each for its own type only.
  bool boolean() const { return std::get<bool>(held); }
  qint64 integer() const { return std::get<qint64>(held); }
  double real() const { return std::get<double>(held); }
  /// A whole or a real number.
  double number() const { return is(Type::Integer) ? double(integer()) : real(); }
  const QString &text() const { return std::get<QString>(held); }
  ::Date &date() const { return *std::get<DatePtr>(held); }
  const ScriptFile &file() const { return std::get<ScriptFile>(held); }
  const QByteArray &data() const { return std::get<QByteArray>(held); }
  /// The word of a constant or of a class.
  const QString &term() const;
  ScriptListItems &items() const { return *std::get<ListPtr>(held); }
  ScriptRecordFields &fields() const { return *std::get<RecordPtr>(held); }
  /// What the copies of a list or record share.
  const std::shared_ptr<ScriptListItems> &sharedItems() const { return std::get<ListPtr>(held); }
  const std::shared_ptr<ScriptRecordFields> &sharedFields() const { return std::get<RecordPtr>(held); }
  /// A field of a record; null if it has none of that name.
  const ScriptValue *field(const QString &name) const;
  const ScriptObjectPtr &object() const { return std::get<ScriptObjectPtr>(held); }
  const std::shared_ptr<const ScriptReference> &reference() const {
    return std::get<std::shared_ptr<const ScriptReference>>(held);
  }
  const std::shared_ptr<ScriptInstance> &instance() const {
    return std::get<std::shared_ptr<ScriptInstance>>(held);
  }

 private:
  using DatePtr = std::shared_ptr<::Date>;
  using ListPtr = std::shared_ptr<ScriptListItems>;
  using RecordPtr = std::shared_ptr<ScriptRecordFields>;
  std::variant<std::monostate, ScriptMissing, bool, qint64, double, QString, DatePtr, ScriptFile, QByteArray,
               ScriptConstant, ScriptClassName, ListPtr, RecordPtr, ScriptObjectPtr,
               std::shared_ptr<const ScriptReference>, std::shared_ptr<ScriptInstance>>
      held;
};
