#include "scanners/GroupDeclaration.h"

#include <QSet>
#include <vector>

#include "app/state/AppState.h"
#include "values/Keys.h"

namespace {

using Rows = std::vector<Dictionary>;

struct Group {
  qint64 number = 0;
  Rows members, chosen;
};

/// The groups that hold one of the rows, in the order of the list.
std::vector<Group> groupsOf(const Array &list, const QSet<const void *> &rows) {
  std::vector<Group> groups;
  Group current;
  const auto finish = [&] {
    if (!current.chosen.empty()) groups.push_back(current);
  };
  for (const Value &value : list) {
    const Dictionary &row = value.toDictionary();
    const qint64 number = row.value(keys::DupeGroup).toInteger();
    if (current.members.empty() || number != current.number) {
      finish();
      current.members.clear();
      current.chosen.clear();
      current.number = number;
    }
    current.members.push_back(row);
    if (rows.contains(row.identity())) current.chosen.push_back(row);
  }
  finish();
  return groups;
}

const QString &persistentIDOf(const Dictionary &row) {
  return row.value(keys::PersistentID).toText();
}

/// The persistent IDs of the rows, the last row first.
Array persistentIDs(const Rows &rows) {
  const Array pids = Array::make();
  for (auto row = rows.crbegin(); row != rows.crend(); ++row) {
    if (!persistentIDOf(*row).isEmpty()) pids.append(persistentIDOf(*row));
  }
  return pids;
}

/// The rows of a group that its first row has no more to do with.
Rows rowsToTake(const Rows &members, const QSet<QString> &ignored) {
  Rows taken;
  for (size_t place = 1; place < members.size(); ++place) {
    if (ignored.contains(persistentIDOf(members[place]))) taken.push_back(members[place]);
  }
  // A group of one is no group.
  if (taken.size() + 1 == members.size()) taken.push_back(members.front());
  return taken;
}

/// Takes the rows from the list in one pass.
void removeRows(const Array &list, const QSet<const void *> &rows) {
  qsizetype kept = 0;
  for (qsizetype index = 0; index < list.size(); ++index) {
    if (rows.contains(list.at(index).toDictionary().identity())) continue;
    if (kept != index) list.set(kept, list.at(index));
    ++kept;
  }
  while (list.size() > kept) list.removeAt(list.size() - 1);
}

}  // namespace

DeclaredGroups declareNoDuplicates(AppState &state, const Array &rows) {
  QSet<const void *> chosen, taken;
  for (const Value &row : rows) chosen.insert(row.toDictionary().identity());
  chosen.remove(nullptr);
  const Array list = state.lists.mDuplicateSongDicts;
  const ObjectLock lock = state.threadLockForObject(list);
  const std::lock_guard held(*lock);
  const std::vector<Group> groups = groupsOf(list, chosen);
  DeclaredGroups done;
  for (auto group = groups.crbegin(); group != groups.crend(); ++group) {
    if (group->chosen.size() < 2) continue;
    state.ignoredDuplicates.addIgnoredDuplicatePIDs(persistentIDs(group->chosen));
    ++done.declarations;
    const QSet<QString> ignored =
        state.ignoredDuplicates.ignoredDuplicatesForPID(persistentIDOf(group->members.front()));
    const Rows gone = rowsToTake(group->members, ignored);
    for (const Dictionary &row : gone) taken.insert(row.identity());
    if (gone.size() == group->members.size()) done.needsStripes = true;
  }
  if (!taken.isEmpty()) removeRows(list, taken);
  return done;
}
