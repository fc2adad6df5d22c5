#include "ctl/Options.h"

bool Options::parse(const QStringList &arguments, qsizetype maximumOperands, QString *error) {
  bool onlyOperands = false;
  for (qsizetype i = 0; i < arguments.size(); ++i) {
    const QString &argument = arguments[i];
    if (onlyOperands || !argument.startsWith(u'-') || argument.size() == 1) {
      plain << argument;
      continue;
    }
    if (argument == QStringLiteral("--")) {
      onlyOperands = true;
      continue;
    }
    const bool isAssigned = argument.contains(u'=');
    const QString name = argument.section(u'=', 0, 0);
    if (valued.contains(name)) {
      if (!isAssigned && i + 1 == arguments.size()) {
        *error = QStringLiteral("%1 needs a value").arg(name);
        return false;
      }
      take(name, isAssigned ? argument.section(u'=', 1) : arguments[++i]);
    } else if (flags.contains(name)) {
      if (isAssigned) {
        *error = QStringLiteral("%1 takes no value").arg(name);
        return false;
      }
      take(name, {});
    } else {
      *error = QStringLiteral("unknown option %1").arg(name);
      return false;
    }
  }
  if (plain.size() <= maximumOperands) return true;
  *error = QStringLiteral("surplus argument %1").arg(plain[maximumOperands]);
  return false;
}

void Options::take(const QString &name, const QString &value) {
  given[name] << value;
  inOrder.append({name, value});
}
