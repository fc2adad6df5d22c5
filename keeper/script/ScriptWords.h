#pragma once

#include <QString>
#include <array>

/// The words of one text in lower case: a word that comes again shares its letters with the one before. One
/// thread.
class ScriptWords {
 public:
  struct Word {
    QString text;
    /// As WordFilter counts it.
    quint32 hash = 0;
    /// A word of the language's grammar, which names nothing.
    bool reserved = false;
  };
  /// What was written so; valid until the next call.
  const Word &of(QStringView written);

 private:
  const Word &unusual(QStringView written);

  static constexpr qsizetype kLongest = 32;
  static constexpr int kPlaceBits = 7;
  /// By their hash; the last one seen has the place.
  std::array<Word, size_t(1) << kPlaceBits> seen;
  Word last;
};
