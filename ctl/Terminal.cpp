#include "ctl/Terminal.h"

QString printable(QString text) {
  for (QChar &unit : text) {
    const bool steersTheTerminal = unit.category() == QChar::Other_Control;
    const bool turnsTheLine = unit.unicode() >= 0x202A && unit.unicode() <= 0x202E;
    if (steersTheTerminal || turnsTheLine) unit = QChar(0xFFFD);
  }
  return text;
}
