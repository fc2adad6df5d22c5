#include "ui/RKTrackInfoPriorityController.h"

#include "bridge/LocalizedMessage.h"
#include "support/BMLog.h"

void RKTrackInfoPriorityController::setPriorityArray(const QStringList &identifiers) {
  priorities = identifiers;
  if (onReloaded) onReloaded();
}

QString RKTrackInfoPriorityController::textOf(const QString &identifier) {
  return localizedMessage(QStringLiteral("PreferInfo-") + identifier);
}

bool RKTrackInfoPriorityController::acceptDrop(const QStringList &identifiers, qsizetype row) {
  if (identifiers.isEmpty()) return false;
  const QString anchor = row >= 0 && row < priorities.size() ? priorities.at(row) : QString();
  BMLog("acceptDrop %d items in front of %@", int(identifiers.size()), anchor);
  for (const QString &identifier : identifiers) {
    if (identifier == anchor) continue;
    priorities.removeAll(identifier);
    const qsizetype place = anchor.isNull() ? -1 : priorities.indexOf(anchor);
    priorities.insert(place < 0 ? priorities.size() : place, identifier);
  }
  tellOfChange();
  return true;
}

void RKTrackInfoPriorityController::move(qsizetype from, qsizetype to) {
  const qsizetype count = priorities.size();
  if (from == to || from < 0 || to < 0 || from >= count || to >= count) return;
  priorities.move(from, to);
  tellOfChange();
}

void RKTrackInfoPriorityController::tellOfChange() {
  if (onReloaded) onReloaded();
  if (onPriorityChanged) onPriorityChanged();
}
