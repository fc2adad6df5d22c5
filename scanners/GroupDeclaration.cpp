#include "scanners/GroupDeclaration.h"

#include <QSet>
#include <vector>

#include "app/state/AppState.h"
#include "values/Keys.h"

namespace {

using Identities = QSet<const void *>;

/// The rows from `first` up to `end` of the list.
struct Group {
  qsizetype first = 0, end = 0;
};

const Dictionary &rowAt(const Array &list, qsizetype place) {
  return list.at(place).toDictionary();
}

qint64 groupNumberAt(const Array &list, qsizetype place) {
  return rowAt(list, place).value(keys::DupeGroup).toInteger();
}

/// The groups that hold two or more of the rows, in the order of the list.
std::vector<Group> groupsWithTwoOf(const Array &list, const Identities &rows) {
  std::vector<Group> groups;
  for (qsizetype first = 0; first < list.size();) {
    const qint64 number = groupNumberAt(list, first);
    int chosen = 0;
    qsizetype end = first;
    for (; end < list.size() && groupNumberAt(list, end) == number; ++end) {
      chosen += rows.contains(rowAt(list, end).identity()) ? 1 : 0;
    }
    if (chosen >= 2) groups.push_back({first, end});
    first = end;
  }
  return groups;
}

const QString &persistentIDOf(const Dictionary &row) {
  return row.value(keys::PersistentID).toText();
}

/// The persistent IDs of a group's chosen rows, the last row first.
Array declarationOf(const Array &list, Group group, const Identities &chosen) {
  const Array pids = Array::make();
  for (qsizetype place = group.end - 1; place >= group.first; --place) {
    const Dictionary &row = rowAt(list, place);
    if (chosen.contains(row.identity()) && !persistentIDOf(row).isEmpty()) pids.append(persistentIDOf(row));
  }
  return pids;
}

/// The rows of a group that its first row has no more to do with; all of them if only the first is left,
/// since a group of one is no group.
std::vector<const void *> rowsToTake(const Array &list, Group group, const QSet<QString> &ignored) {
  std::vector<const void *> taken;
  for (qsizetype place = group.first + 1; place < group.end; ++place) {
    const Dictionary &row = rowAt(list, place);
    if (ignored.contains(persistentIDOf(row))) taken.push_back(row.identity());
  }
  if (qsizetype(taken.size()) == group.end - group.first - 1) {
    taken.push_back(rowAt(list, group.first).identity());
  }
  return taken;
}

/// Takes the rows from the list in one pass.
void removeRows(const Array &list, const Identities &rows) {
  qsizetype kept = 0;
  for (qsizetype place = 0; place < list.size(); ++place) {
    if (rows.contains(rowAt(list, place).identity())) continue;
    if (kept != place) list.set(kept, list.at(place));
    ++kept;
  }
  while (list.size() > kept) list.removeAt(list.size() - 1);
}

}  // namespace

DeclaredGroups declareNoDuplicates(AppState &state, const Array &rows) {
  Identities chosen, taken;
  for (const Value &row : rows) chosen.insert(row.toDictionary().identity());
  chosen.remove(nullptr);
  const Array list = state.lists.mDuplicateSongDicts;
  const ObjectLock lock = state.threadLockForObject(list);
  const std::lock_guard held(*lock);
  const std::vector<Group> groups = groupsWithTwoOf(list, chosen);
  DeclaredGroups done;
  for (auto group = groups.crbegin(); group != groups.crend(); ++group) {
    state.ignoredDuplicates.addIgnoredDuplicatePIDs(declarationOf(list, *group, chosen));
    ++done.declarations;
    const QSet<QString> ignored =
        state.ignoredDuplicates.ignoredDuplicatesForPID(persistentIDOf(rowAt(list, group->first)));
    const std::vector<const void *> gone = rowsToTake(list, *group, ignored);
    for (const void *row : gone) taken.insert(row);
    if (qsizetype(gone.size()) == group->end - group->first) done.needsStripes = true;
  }
  if (!taken.isEmpty()) removeRows(list, taken);
  return done;
}
