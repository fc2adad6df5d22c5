#pragma once

#include <QString>
#include <QStringView>
#include <functional>

/// A dictionary key. Equal texts are one interned text for the life of the process, so two keys compare as
/// pointers. Trivially copyable; any thread.
class Key {
 public:
  constexpr Key() = default;

  /// The key of this text, interned now if it is new.
  explicit Key(QStringView text);
  explicit Key(const QString &text) : Key(QStringView(text)) {}

  /// The key of this text if any code has made it before, else the absent key. Never interns.
  static Key find(QStringView text);

  bool isAbsent() const { return interned == nullptr; }
  /// The key's text; empty for the absent key.
  const QString &text() const;

  bool operator==(const Key &) const = default;
  size_t hash() const { return std::hash<const void *>()(interned) >> 4; }

 private:
  const QString *interned = nullptr;
};
