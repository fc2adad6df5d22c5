#pragma once

#include <array>
#include <string>
#include <utility>
#include <vector>

/// A list of replacements of ASCII texts, made ready for many applications. Each replaces every occurrence of
/// a key, from the front and without looking again at what it put in, on the result of the one before it.
/// Only the keys that can occur are looked for: each is filed under its rarest pair of letters, and a pass
/// over the text finds the filed pairs. Unchangeable once made; any thread.
class ByteReplacements {
 public:
  /// Keys and values in lower case, in the order of application. Empty keys occur nowhere.
  explicit ByteReplacements(std::vector<std::pair<std::string, std::string>> pairs);

  /// Applies all to a text of lower-case ASCII; `scratch` is room that the caller keeps between calls.
  void apply(std::string &text, std::string &scratch) const;

 private:
  using Bits = std::vector<unsigned long long>;
  static constexpr unsigned kClasses = 64;

  void file();
  void markPairs(const std::string &text, size_t from, size_t to, Bits &candidates) const;
  void replaceOne(size_t number, std::string &text, std::string &scratch, Bits &candidates) const;

  std::vector<std::pair<std::string, std::string>> replacements;
  /// The numbers of the keys filed under pair p: filed[starts[p]] up to filed[starts[p + 1]].
  std::array<unsigned, kClasses * kClasses + 1> starts{};
  std::vector<unsigned> filed;
};
