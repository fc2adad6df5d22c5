#include "ctl/Terminal.h"

#include <string>

bool agrees(const QString &question, Terminal &terminal) {
  terminal.err << question.toStdString() << " [y/N] " << std::flush;
  std::string answer;
  std::getline(terminal.in, answer);
  const QString word = QString::fromStdString(answer).trimmed().toLower();
  return word == u"y" || word == u"yes";
}

QString printable(QString text) {
  for (QChar &unit : text) {
    const bool steersTheTerminal = unit.category() == QChar::Other_Control;
    const bool turnsTheLine = unit.unicode() >= 0x202A && unit.unicode() <= 0x202E;
    if (steersTheTerminal || turnsTheLine) unit = QChar(0xFFFD);
  }
  return text;
}
