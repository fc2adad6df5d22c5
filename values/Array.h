#pragma once

#include <QtGlobal>

#include "values/Shared.h"

class Value;
struct ArrayStorage;
void destroyBody(ArrayStorage *storage);

/// What every reference to one list shares: its identity and flag, and its values, which may be shared with
/// copies until one of them changes.
struct ArrayBody : Counted {
  bool isMutable = true;
  Shared<ArrayStorage> storage;
};
void destroyBody(ArrayBody *body);

/// An ordered list of values with an identity: copies of an `Array` are references to one list. A default one
/// refers to none: it reads as empty and must not be written. Not locked: whoever shares a changing list
/// across threads locks it. Complete for use once values/Value.h is included.
class Array {
 public:
  Array() = default;
  /// A new empty list.
  static Array make(bool isMutable = true);

  bool isNull() const { return !body; }
  bool isMutable() const { return body && body->isMutable; }
  /// Makes the list unchangeable from now on, for all who refer to it.
  void freeze() const;
  /// Tells lists apart; null for none.
  const void *identity() const { return body.get(); }
  bool isSame(const Array &other) const { return identity() == other.identity(); }

  qsizetype size() const;
  bool isEmpty() const { return size() == 0; }
  /// The value at an index from 0 to size() - 1; the null value outside.
  const Value &at(qsizetype index) const;
  const Value *begin() const;
  const Value *end() const;

  /// Changes are for mutable lists; on others they do nothing (debug builds assert).
  void append(Value value) const;
  /// Replaces the value at an index below size().
  void set(qsizetype index, Value value) const;
  /// Removes the value at an index below size().
  void removeAt(qsizetype index) const;
  void reserve(qsizetype count) const;
  /// Gives back the memory kept for growth.
  void squeeze() const;

  /// A new list with the same members; containers among them stay shared with this one. The members' memory is
  /// shared too until one of the two lists changes. Null for none.
  Array copyMembers(bool isMutable) const;
  /// True when no member is a container or nothing, so that `copyMembers` shares nothing observable.
  bool isPlain() const;

 private:
  explicit Array(ArrayBody *made) : body(made) {}
  ArrayStorage *writable() const;
  Shared<ArrayBody> body;
};
