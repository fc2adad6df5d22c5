#include "scanners/DuplicateGroups.h"

#include "app/state/AppState.h"
#include "values/Keys.h"

void DuplicateGroups::setStripesForDupesFromIndex(qint32 index) {
  const Array &rows = state.lists.mDuplicateSongDicts;
  bool stripe = false;
  qint32 group = 1;
  if (index >= 1) {
    const Dictionary &before = rows.at(index - 1).toDictionary();
    stripe = before.value(keys::UIStripe).toBool();
    group = qint32(before.value(keys::DupeGroup).toInteger());
  }
  for (qsizetype place = qMax(index, 0); place < rows.size(); ++place) {
    const Dictionary &row = rows.at(place).toDictionary();
    const auto own = qint32(row.value(keys::DupeGroup).toInteger());
    if (own != group) stripe = !stripe;
    group = own;
    if (row.value(keys::UIStripe).isNull() || row.value(keys::UIStripe).toBool() != stripe) {
      row.set(keys::UIStripe, stripe);
    }
  }
}
