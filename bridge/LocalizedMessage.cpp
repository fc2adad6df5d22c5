#include "bridge/LocalizedMessage.h"

#include "bridge/iTunesInterface.h"

QString localizedMessage(const QString &key) {
  return tableText(key).replace(QStringLiteral("[MUSICAPPNAME]"), iTunesInterface::musicAppName());
}
