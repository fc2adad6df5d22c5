#pragma once

#include <QtGlobal>

/// A small generator whose numbers depend on the seed alone, on every machine (SplitMix64).
class Random {
 public:
  explicit Random(quint64 seed) : state(seed) {}

  quint64 next() {
    quint64 z = (state += 0x9e3779b97f4a7c15u);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
    return z ^ (z >> 31);
  }
  /// From 0 to bound - 1; `bound` is above 0.
  int below(int bound) { return int(next() % quint64(bound)); }
  /// From low to high, both included.
  int between(int low, int high) { return low + below(high - low + 1); }
  bool chance(int percent) { return below(100) < percent; }

 private:
  quint64 state;
};
