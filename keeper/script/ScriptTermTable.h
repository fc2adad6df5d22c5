#pragma once

#include <QHash>
#include <QStringList>
#include <algorithm>
#include <vector>

#include "keeper/script/WordFilter.h"

/// Terms of one or more words, in lower case and parted by one blank. A Term says in `words` how many it has.
/// Filled once, then only read; any thread.
template <typename Term>
class ScriptTermTable {
 public:
  /// The term with this spelling, made if it is new; valid until the next call.
  Term &operator[](const QString &spelling) {
    const QStringList words = spelling.split(u' ');
    firstWords.add(words.first());
    longest = std::max(longest, int(words.size()));
    std::vector<Entry> &entries = byFirstWord[words.first()];
    auto place = entries.begin();
    for (; place != entries.end() && place->words.size() >= words.size(); ++place) {
      if (place->words == words) return place->term;
    }
    place = entries.insert(place, Entry{words, {}});
    place->term.words = int(words.size());
    return place->term;
  }

  /// How many words the longest term has.
  int mostWords() const { return longest; }

  /// The longest term that a text begins with; null for none. Of the first word it wants the WordFilter
  /// number too, and `isWord(i, word)` tells whether the one so many behind it is this word; it is asked no
  /// further than the words before agree.
  template <typename IsWord>
  const Term *longestTerm(const QString &first, quint32 hash, const IsWord &isWord) const {
    // Most words begin no term.
    if (!firstWords.mayHold(hash)) return nullptr;
    const auto entries = byFirstWord.constFind(first);
    if (entries == byFirstWord.cend()) return nullptr;
    for (const Entry &entry : *entries) {
      int matched = 1;
      while (matched < entry.words.size() && isWord(matched, entry.words[matched])) ++matched;
      if (matched == entry.words.size()) return &entry.term;
    }
    return nullptr;
  }

 private:
  struct Entry {
    QStringList words;
    Term term;
  };
  /// The longest first.
  QHash<QString, std::vector<Entry>> byFirstWord;
  WordFilter firstWords;
  int longest = 0;
};
