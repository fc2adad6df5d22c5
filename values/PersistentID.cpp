#include "values/PersistentID.h"

namespace {

constexpr qsizetype kDigits = 16;

}  // namespace

QString hexPersistentID(quint64 persistentID) {
  QString text(kDigits, Qt::Uninitialized);
  for (qsizetype place = kDigits - 1; place >= 0; --place, persistentID >>= 4) {
    text[place] = QLatin1Char("0123456789ABCDEF"[persistentID & 0xF]);
  }
  return text;
}

std::optional<quint64> persistentIDOfText(QStringView text) {
  if (text.isEmpty() || text.size() > kDigits) return {};
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

bool isPersistentID(QStringView text) {
  return text.size() == kDigits && persistentIDOfText(text).has_value();
}
