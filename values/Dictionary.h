#pragma once

#include <QtGlobal>
#include <functional>
#include <span>

#include "values/Key.h"
#include "values/Shared.h"

class Value;
struct DictionaryEntry;
struct DictionaryStorage;
void destroyBody(DictionaryStorage *storage);

/// What every reference to one dictionary shares: its identity and flag, and its entries, which may be shared
/// with copies until one of them changes.
struct DictionaryBody : Counted {
  bool isMutable = true;
  Shared<DictionaryStorage> storage;
};
void destroyBody(DictionaryBody *body);

/// A run of (key, value) in the order in which the keys came, with an identity: copies of a `Dictionary` are
/// references to one dictionary. A default one refers to none: it reads as empty and must not be written. Not
/// locked: whoever shares a changing dictionary across threads locks it. Complete for use once values/Value.h
/// is included.
class Dictionary {
 public:
  Dictionary() = default;
  /// A new empty dictionary.
  static Dictionary make(bool isMutable = true);

  bool isNull() const { return !body; }
  bool isMutable() const { return body && body->isMutable; }
  /// Makes the dictionary unchangeable from now on, for all who refer to it.
  void freeze() const;
  /// Tells dictionaries apart; null for none.
  const void *identity() const { return body.get(); }
  bool isSame(const Dictionary &other) const { return identity() == other.identity(); }

  qsizetype size() const;
  bool isEmpty() const { return size() == 0; }
  /// The value under a key; the null value if there is none. Valid until the dictionary changes.
  const Value &value(Key key) const;
  bool contains(Key key) const;
  /// The entries in order. Valid until the dictionary changes.
  const DictionaryEntry *begin() const;
  const DictionaryEntry *end() const;

  /// Changes are for mutable dictionaries; on others they do nothing (debug builds assert).
  /// Stores a value: in the key's place if the key is there, else at the end. A null value removes the key.
  void set(Key key, Value value) const;
  void remove(Key key) const;
  /// Removes every entry for which the test holds, in one pass.
  void removeIf(const std::function<bool(const DictionaryEntry &)> &test) const;
  /// Moves entries into an empty dictionary, with no more room than they need. Their keys differ from each
  /// other and no value is null.
  void takeEntries(std::span<DictionaryEntry> entries) const;
  void reserve(qsizetype count) const;
  /// Gives back the memory kept for growth.
  void squeeze() const;

  /// A new dictionary with the same entries; containers among them stay shared with this one. The entries'
  /// memory is shared too until one of the two changes. Null for none.
  Dictionary copyMembers(bool isMutable) const;
  /// True when no value is a container, so that `copyMembers` shares nothing observable.
  bool isPlain() const;

 private:
  explicit Dictionary(DictionaryBody *made) : body(made) {}
  DictionaryStorage *writable() const;
  Shared<DictionaryBody> body;
};
