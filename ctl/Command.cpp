#include "ctl/Command.h"

int reported(const QString &message, Terminal &terminal) {
  terminal.say(message);
  return exitCode::kReported;
}

int Command::wrongUse(const QString &message, Terminal &terminal) const {
  terminal.say(message);
  terminal.err << "usage: tallyfenctl " << (name() + u' ' + usage()).trimmed().toStdString() << '\n';
  return exitCode::kWrongUse;
}
