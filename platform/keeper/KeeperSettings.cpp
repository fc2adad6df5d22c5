#include "platform/keeper/KeeperSettings.h"

#include "platform/KeeperIdentity.h"
#include "platform/Platform.h"

KeeperSettings KeeperSettings::read() {
  KeeperSettings settings;
  for (const auto &[key, setting] : kKeeperSettings) {
    const Value value = platform().preferences->value(keeperIdentity::kIdentifier, key.toString());
    if (value.type() == Value::Type::Boolean) settings.*setting = value.toBool();
  }
  return settings;
}
