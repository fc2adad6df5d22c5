#include "support/ByteSearch.h"

bool containsData(QByteArrayView data, std::optional<QByteArrayView> pattern) {
  if (!pattern) return false;
  return pattern->isEmpty() || data.indexOf(*pattern) >= 0;
}
