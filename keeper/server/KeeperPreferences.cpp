#include "keeper/server/KeeperPreferences.h"

#include "platform/Platform.h"
#include "platform/keeper/KeeperFolder.h"

namespace {

void take(const QString &key, bool *setting) {
  const Value value = platform().preferences->value(keeperFolder::kDomain, key);
  if (value.type() == Value::Type::Boolean) *setting = value.toBool();
}

}  // namespace

KeeperSettings readKeeperSettings() {
  KeeperSettings settings;
  take(QStringLiteral("organise"), &settings.organise);
  take(QStringLiteral("copyToMediaFolder"), &settings.copyToMediaFolder);
  take(QStringLiteral("exportXML"), &settings.exportXML);
  return settings;
}
