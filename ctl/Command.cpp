#include "ctl/Command.h"

int Command::wrongUse(const QString &message, Terminal &terminal) const {
  terminal.say(message);
  terminal.err << "usage: tallyfenctl " << (name() + u' ' + usage()).trimmed().toStdString() << '\n';
  return exitcode::kWrongUse;
}
