#include "support/Preferences.h"

#include <limits>

#include "platform/Platform.h"
#include "support/BMLog.h"

namespace prefs {

Value value(const QString &key) {
  return platform().preferences->value(platform().bundle.identifier, key);
}

bool isTrue(const QString &key) {
  return value(key).toBool();
}

qint32 integer(const QString &key) {
  using Limits = std::numeric_limits<qint32>;
  return qint32(std::clamp<qint64>(value(key).toInteger(), Limits::min(), Limits::max()));
}

double number(const QString &key) {
  return value(key).toDouble();
}

QString text(const QString &key) {
  return value(key).toText();
}

void set(const QString &key, const Value &newValue) {
  platform().preferences->setValue(platform().bundle.identifier, key, newValue);
}

void remove(const QString &key) {
  set(key, Value());
}

void synchronize() {
  QString error;
  if (!platform().preferences->synchronize(&error)) BMLog("!! preferences not saved: %@", error);
}

}  // namespace prefs
