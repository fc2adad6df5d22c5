#include "text/Levenshtein.h"

#include <QStringList>
#include <QVarLengthArray>
#include <algorithm>
#include <numeric>

#include "platform/Platform.h"
#include "support/Workers.h"
#include "text/Search.h"

namespace {

/// The pieces between blanks that hold more than white space, in lower case.
QStringList wordsOf(const QString &text) {
  QStringList words = text.toLower().split(u' ');
  words.removeIf([](const QString &word) { return word.trimmed().isEmpty(); });
  return words;
}

float distanceToNearest(const QString &word, const QStringList &others) {
  float nearest = 100000000.0F;
  for (const QString &other : others) nearest = std::min(nearest, levenshteinCompareWithWord(word, other));
  return nearest;
}

/// The mean over as many words as the time allows. Every hundredth word comes first, so that a sample taken
/// in haste is spread over the whole text.
float meanDistance(const QStringList &words, const QStringList &others, Date begin, float maxSeconds) {
  constexpr qsizetype kStride = 100;
  float sum = 0;
  int visited = 0;
  for (qsizetype sweep = 0; sweep < std::min(words.size(), kStride); ++sweep) {
    for (qsizetype at = sweep; at < words.size(); at += kStride) {
      sum += distanceToNearest(words[at], others);
      ++visited;
      const double elapsed = platform().clock->now().seconds - begin.seconds;
      // A clock may not have moved, and yet no time at all is over.
      if (!(maxSeconds > 0) || elapsed > double(maxSeconds)) return sum / float(visited);
    }
  }
  return sum / float(visited);
}

}  // namespace

float levenshteinCompareWithWord(const QString &text, const QString &other) {
  if (text.isEmpty() || other.isEmpty()) return 0;
  const bool textIsLonger = text.size() > other.size();
  const QStringView longer = textIsLonger ? text : other, shorter = textIsLonger ? other : text;
  // One row of the matrix: a row depends on none but the one above it.
  QVarLengthArray<qint32, 64> row(shorter.size() + 1);
  std::iota(row.begin(), row.end(), 0);
  for (qsizetype i = 0; i < longer.size(); ++i) {
    qint32 diagonal = row[0];
    row[0] = qint32(i) + 1;
    for (qsizetype j = 0; j < shorter.size(); ++j) {
      const qint32 above = row[j + 1];
      const qint32 replaced = diagonal + (longer[i] == shorter[j] ? 0 : 1);
      row[j + 1] = std::min({above + 1, row[j] + 1, replaced});
      diagonal = above;
    }
  }
  return float(row.back());
}

float levenshteinComparePhrase(const QString &text, const QString &other, float maxSeconds) {
  const Date begin = platform().clock->now();
  if (foldedCase(text) == foldedCase(other)) return 0;
  const QStringList words = wordsOf(text), others = wordsOf(other);
  if (words.isEmpty() != others.isEmpty()) return 42.0F;
  const float mean = words.isEmpty() ? 0 : meanDistance(words, others, begin, maxSeconds);
  // Texts that are not equal must not look equal, even if all words of one occur in the other.
  return mean == 0 ? 0.042F : mean;
}

void threadedLevenshteinCompareWithParameters(const QString &text, const LevenshteinParameters &parameters) {
  const float result = levenshteinComparePhrase(text, parameters.other, parameters.maxSeconds);
  platform().mainLoop->postAndWait([&] { parameters.notify(result); });
}

bool asyncLevenshteinCompareWithStringMaxSecondsNotifySelector(const QString &text, const QString &other,
                                                               float maxSeconds,
                                                               std::function<void(float)> notify,
                                                               Workers &workers) {
  return workers.detach(QStringLiteral("phrase comparison"),
                        [text, parameters = LevenshteinParameters{other, maxSeconds, std::move(notify)}] {
                          threadedLevenshteinCompareWithParameters(text, parameters);
                        });
}
