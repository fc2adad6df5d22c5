#include "keeper/library/StoreUpgrade.h"
#include "keeper/library/StoreStatement.h"

#include <QFileInfo>
#include <QVariant>

#include "keeper/library/StoreDatabase.h"
#include "support/BMLog.h"

namespace {

/// VACUUM INTO makes a whole, checked copy whatever the log beside the file holds.
void keepCopy(StoreDatabase &database, int version) {
  const QFileInfo store(database.path());
  const QString copy =
      freePath(QStringLiteral("%1/%2 (version %3)").arg(store.path(), store.completeBaseName()).arg(version),
               u'.' + store.suffix());
  StoreStatement(database, QStringLiteral("VACUUM INTO ?")).bind(copy).run();
  BMLog("[store] kept a copy of version %d as %@", version, copy);
}

void runStep(StoreDatabase &database, const StoreUpgradeStep &step) {
  database.begin();
  try {
    step.run(database);
    database.execute(QStringLiteral("PRAGMA user_version = %1").arg(step.from + 1));
    database.markChanged();
    database.commit();
  } catch (const StoreError &) {
    if (database.isInTransaction()) database.rollBack();
    throw;
  }
}

}  // namespace

std::span<const StoreUpgradeStep> storeUpgradeSteps() {
  // The first version has no predecessors.
  return {};
}

void upgradeStore(StoreDatabase &database, int target, std::span<const StoreUpgradeStep> steps) {
  for (int version = database.answer(QStringLiteral("PRAGMA user_version")).toInt(); version < target;
       ++version) {
    const auto step =
        std::find_if(steps.begin(), steps.end(), [&](const auto &one) { return one.from == version; });
    if (step == steps.end()) {
      throw StoreError{QStringLiteral("cannot open the library %1: no way leads from its version %2 to %3")
                           .arg(database.path())
                           .arg(version)
                           .arg(target)};
    }
    keepCopy(database, version);
    runStep(database, *step);
  }
}

QString freePath(const QString &base, const QString &extension) {
  QString path = base + extension;
  for (int number = 2; QFileInfo::exists(path) || QFileInfo(path).isSymLink(); ++number) {
    path = QStringLiteral("%1 %2%3").arg(base).arg(number).arg(extension);
  }
  return path;
}
