#include "support/FormatCount.h"

QString formatCount(double value) {
  struct Unit {
    double size;
    char16_t letter;
  };
  static constexpr Unit kUnits[] = {{1e15, u'P'}, {1e12, u'T'}, {1e9, u'G'}, {1e6, u'M'}, {1e3, u'K'}};
  for (const Unit &unit : kUnits) {
    if (value * 1.1 >= unit.size) return QString::number(value / unit.size, 'f', 1) + unit.letter;
  }
  QString text = QString::number(value, 'f', 5);
  if (!text.contains(u'.')) return text;  // not a finite number
  while (text.endsWith(u'0')) text.chop(1);
  if (text.endsWith(u'.')) text += u'0';
  return text;
}
