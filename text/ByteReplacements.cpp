#include "text/ByteReplacements.h"

#include <bit>
#include <cstring>
#include <string_view>

namespace {

// Frequent first: a pair of late letters is a rare pair. Class 0 stands behind the text's end.
constexpr std::string_view kByFrequency = " etaoinshrdlucmfwypvbgkqjxz0123456789&'-.,/()!?:+";

constexpr std::array<unsigned char, 128> kClassOf = [] {
  std::array<unsigned char, 128> classes{};
  for (auto &entry : classes) entry = 63;
  for (size_t i = 0; i < kByFrequency.size(); ++i) classes[size_t(kByFrequency[i])] = (unsigned char)(i + 1);
  return classes;
}();

unsigned classOf(const std::string &text, size_t at) {
  return at < text.size() ? kClassOf[size_t(text[at]) & 0x7F] : 0;
}

unsigned rarestPair(const std::string &key) {
  unsigned best = 0, bestRarity = 0;
  for (size_t i = 0; i + 1 < key.size(); ++i) {
    const unsigned first = classOf(key, i), second = classOf(key, i + 1);
    if (first + second > bestRarity) {
      bestRarity = first + second;
      best = first * 64 + second;
    }
  }
  return best;
}

}  // namespace

ByteReplacements::ByteReplacements(std::vector<std::pair<std::string, std::string>> pairs)
    : replacements(std::move(pairs)) {
  file();
}

void ByteReplacements::file() {
  std::vector<std::vector<unsigned>> lists(kClasses * kClasses);
  for (unsigned number = 0; number < replacements.size(); ++number) {
    const std::string &key = replacements[number].first;
    if (key.size() > 1) lists[rarestPair(key)].push_back(number);
    // A single letter may stand before any other.
    for (unsigned second = 0; key.size() == 1 && second < kClasses; ++second)
      lists[classOf(key, 0) * kClasses + second].push_back(number);
  }
  for (size_t pair = 0; pair < lists.size(); ++pair) {
    filed.insert(filed.end(), lists[pair].begin(), lists[pair].end());
    starts[pair + 1] = unsigned(filed.size());
  }
}

void ByteReplacements::markPairs(const std::string &text, size_t from, size_t to, Bits &candidates) const {
  unsigned first = classOf(text, from);
  for (size_t at = from; at < to; ++at) {
    const unsigned second = classOf(text, at + 1), pair = first * kClasses + second;
    for (unsigned entry = starts[pair]; entry < starts[pair + 1]; ++entry)
      candidates[filed[entry] / 64] |= 1ULL << (filed[entry] % 64);
    first = second;
  }
}

void ByteReplacements::replaceOne(size_t number, std::string &text, std::string &scratch,
                                  Bits &candidates) const {
  const auto &[key, value] = replacements[number];
  size_t at = text.find(key);
  if (at == std::string::npos) return;
  scratch.clear();
  size_t done = 0;
  for (; at != std::string::npos; at = text.find(key, done)) {
    scratch.append(text, done, at - done).append(value);
    done = at + key.size();
  }
  scratch.append(text, done, std::string::npos);
  text.swap(scratch);
  // What was put in may have made pairs that later keys are filed under.
  markPairs(text, 0, text.size(), candidates);
}

void ByteReplacements::apply(std::string &text, std::string &scratch) const {
  static thread_local Bits candidates;
  candidates.assign((replacements.size() + 63) / 64, 0);
  markPairs(text, 0, text.size(), candidates);
  for (size_t word = 0; word < candidates.size(); ++word) {
    unsigned long long later = ~0ULL;
    while (const unsigned long long left = candidates[word] & later) {
      const unsigned bit = unsigned(std::countr_zero(left));
      later = bit == 63 ? 0 : ~0ULL << (bit + 1);
      replaceOne(word * 64 + bit, text, scratch, candidates);
    }
  }
}
