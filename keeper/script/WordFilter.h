#pragma once

#include <QStringView>
#include <bitset>

/// Tells most words that are not in a set from those that may be, by a number that each word of a text is
/// given once: the look-up itself is left to the few that may be. Filled once, then only read; any thread.
class WordFilter {
 public:
  /// The number of a word in lower case, unit by unit from 0.
  static constexpr quint32 hashOf(quint32 before, char16_t unit) { return before * 31 + unit; }
  static quint32 hashOf(QStringView word) {
    quint32 hash = 0;
    for (const QChar unit : word) hash = hashOf(hash, unit.unicode());
    return hash;
  }

  /// The same number with its differences in the high bits.
  static constexpr quint32 spread(quint32 hash) { return hash * 0x9E3779B1u; }

  void add(QStringView word) { marked.set(place(hashOf(word))); }
  /// False for a word that was not added; true for one that was, and for a few more.
  bool mayHold(quint32 hash) const { return marked.test(place(hash)); }

 private:
  static constexpr size_t place(quint32 hash) { return spread(hash) >> 21; }

  std::bitset<2048> marked;
};
