#include "keeper/library/StoreRows.h"

QString persistentIDText(quint64 id) {
  return QString::number(id, 16).toUpper().rightJustified(16, u'0');
}

std::optional<quint64> persistentIDOfText(const QString &text) {
  if (text.isEmpty() || text.size() > 16) return {};
  quint64 id = 0;
  for (const QChar digit : text) {
    const char16_t unit = digit.unicode();
    int worth = -1;
    if (unit >= u'0' && unit <= u'9') worth = unit - u'0';
    if (unit >= u'A' && unit <= u'F') worth = unit - u'A' + 10;
    if (unit >= u'a' && unit <= u'f') worth = unit - u'a' + 10;
    if (worth < 0) return {};
    id = id << 4 | quint64(worth);
  }
  return id;
}
