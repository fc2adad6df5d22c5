#include "text/NumericCompare.h"

namespace {

bool isDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

/// The run of digits at the front, which is taken off the text; without its leading zeros.
QStringView takeNumber(QStringView &text) {
  qsizetype zeros = 0;
  while (zeros < text.size() && text[zeros] == u'0') ++zeros;
  qsizetype end = zeros;
  while (end < text.size() && isDigit(text[end])) ++end;
  const QStringView number = text.sliced(zeros, end - zeros);
  text = text.sliced(end);
  return number;
}

int compareNumbers(QStringView a, QStringView b) {
  if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
  return a.compare(b);
}

}  // namespace

int compareByWorth(QStringView text, QStringView other) {
  while (!text.isEmpty() && !other.isEmpty()) {
    if (isDigit(text.front()) && isDigit(other.front())) {
      const QStringView number = takeNumber(text), otherNumber = takeNumber(other);
      if (const int order = compareNumbers(number, otherNumber)) return order;
      continue;
    }
    const QChar a = text.front().toCaseFolded(), b = other.front().toCaseFolded();
    if (a != b) return a < b ? -1 : 1;
    text = text.sliced(1);
    other = other.sliced(1);
  }
  return int(!text.isEmpty()) - int(!other.isEmpty());
}
