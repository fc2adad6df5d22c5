#include "app/state/LocalizedAlert.h"

#include "bridge/LocalizedMessage.h"

Alert localizedAlert(const QString &titleKey, const QString &message, const QStringList &buttonKeys,
                     bool critical) {
  Alert alert;
  alert.key = titleKey;
  alert.title = localizedMessage(titleKey);
  alert.message = message;
  for (const QString &key : buttonKeys) alert.buttons.append(localizedMessage(key));
  alert.critical = critical;
  return alert;
}
