#include "repairs/GroupRows.h"

#include <QHash>
#include <algorithm>

#include "app/state/AppState.h"
#include "support/Copy.h"
#include "values/Keys.h"
#include "values/NotFound.h"

namespace {

qint64 numberOf(const Value &row) {
  return row.toDictionary().value(keys::DupeGroup).toInteger();
}

}  // namespace

GroupRows::GroupRows(AppState &appState) : state(appState) {
  constexpr int kInfo = 1, kAudio = 2;
  const Array &list = state.lists.mDuplicateSongDicts;
  const ObjectLock lock = state.threadLockForObject(list);
  const std::lock_guard held(*lock);
  QHash<qint64, int> marks;
  for (const Value &value : list) {
    const qint64 number = numberOf(value);
    isInOrder = isInOrder && (&value == list.begin() || mHighest <= number);
    mHighest = number;
    const Dictionary &row = value.toDictionary();
    const bool hasInfo = row.value(keys::markInfo).toBool(), hasAudio = row.value(keys::markAudio).toBool();
    if (hasInfo || hasAudio) marks[number] |= (hasInfo ? kInfo : 0) | (hasAudio ? kAudio : 0);
  }
  for (auto group = marks.cbegin(); group != marks.cend(); ++group) {
    if (*group == (kInfo | kAudio) && group.key() >= 1 && group.key() <= mHighest)
      mMarked.push_back(group.key());
  }
  std::sort(mMarked.begin(), mMarked.end());
}

qsizetype GroupRows::placeOf(const Array &list, qint64 number) const {
  const Value *const place =
      std::lower_bound(list.begin(), list.end(), number,
                       [](const Value &row, qint64 wanted) { return numberOf(row) < wanted; });
  return place - list.begin();
}

std::vector<Dictionary> GroupRows::rowsOf(qint64 number) const {
  const Array &list = state.lists.mDuplicateSongDicts;
  const ObjectLock lock = state.threadLockForObject(list);
  const std::lock_guard held(*lock);
  std::vector<Dictionary> rows;
  for (qsizetype place = isInOrder ? placeOf(list, number) : 0; place < list.size(); ++place) {
    const bool isOfGroup = numberOf(list.at(place)) == number;
    if (isOfGroup) rows.push_back(list.at(place).toDictionary());
    if (isInOrder && !isOfGroup) break;
  }
  return rows;
}

qint64 GroupRows::remove(const Dictionary &row) const {
  const Array &list = state.lists.mDuplicateSongDicts;
  const ObjectLock lock = state.threadLockForObject(list);
  const std::lock_guard held(*lock);
  qint64 place = isInOrder ? placeOf(list, numberOf(row)) : 0;
  while (place < list.size() && !list.at(place).toDictionary().isSame(row)) ++place;
  if (place >= list.size()) return kNotFound;
  list.removeAt(place);
  return place;
}
