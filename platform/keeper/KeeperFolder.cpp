#include "platform/keeper/KeeperFolder.h"

#include <QFileInfo>

#include "platform/KeeperIdentity.h"
#include "platform/Platform.h"
#include "platform/keeper/StoreSchema.h"

namespace keeperFolder {

namespace {

const QString kLocation = QStringLiteral("Database Location");

}  // namespace

QString ofUser() {
  const Value location = platform().preferences->value(keeperIdentity::kIdentifier, kLocation);
  const QString store = location.isText() ? location.toText() : QString();
  if (QFileInfo(store).isFile()) return QFileInfo(store).absolutePath();
  return platform().folders.music + QStringLiteral("/iTunes");
}

void note(const QString &folder) {
  const QString store = folder + u'/' + storeSchema::kFileName;
  const Value location = platform().preferences->value(keeperIdentity::kIdentifier, kLocation);
  if (location.isText() && location.toText() == store) return;
  platform().preferences->setValue(keeperIdentity::kIdentifier, kLocation, store);
}

}  // namespace keeperFolder
