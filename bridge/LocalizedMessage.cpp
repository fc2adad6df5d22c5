#include "bridge/LocalizedMessage.h"

#include "bridge/MusicApplication.h"

QString localizedMessage(const QString &key) {
  return tableText(key).replace(QStringLiteral("[MUSICAPPNAME]"), iTunesInterface::musicAppName());
}
