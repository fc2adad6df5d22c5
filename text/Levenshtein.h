#pragma once

#include <QString>
#include <functional>

class Workers;

/// The edits (a unit put in, taken out or replaced) that make one word of the other, case and all; swapping
/// two is two edits. 0 if either is empty. Takes time by the product of the lengths, memory by the shorter
/// one alone, so that no length is too much for it. Any thread.
float levenshteinCompareWithWord(const QString &text, const QString &other);

/// How far the words of a text are, in the mean, each from its nearest word of the other. Not symmetric.
/// 0 only for texts that are equal but for case; 0.042 if all words are found in any order, or neither text
/// has a word; 42 if one alone has none. When `maxSeconds` of the platform's clock are over, which is looked
/// at after each word, the mean is that of the words so far, which are a sample of the whole text; at least
/// one is looked at. Any thread.
float levenshteinComparePhrase(const QString &text, const QString &other, float maxSeconds);

/// What a phrase comparison on a thread of its own needs.
struct LevenshteinParameters {
  QString other;
  float maxSeconds = 0;
  /// Called on the main thread with the result; the comparing thread waits for its return.
  std::function<void(float)> notify;
};

/// Compares and tells the result: the body of the thread.
void threadedLevenshteinCompareWithParameters(const QString &text, const LevenshteinParameters &parameters);

/// Starts one thread, which `workers` owns, for `levenshteinComparePhrase`, and returns at once; `notify` is
/// called once, on the main thread. False, with a line in the log, if there is no thread to be had; then it
/// is never called.
[[nodiscard]] bool asyncLevenshteinCompareWithStringMaxSecondsNotifySelector(
    const QString &text, const QString &other, float maxSeconds, std::function<void(float)> notify,
    Workers &workers);
