#include "ctl/PlanMarks.h"

#include <QSet>
#include <algorithm>

#include "values/Keys.h"

namespace {

/// A group's tracks and what they are for, as one text.
QString signatureOf(const GroupPlan &group) {
  QStringList unkept;
  for (const GroupPlan::Unkept &row : group.unkept) unkept << row.pid;
  unkept.sort();
  return pidOf(group.audioRow) + pidOf(group.infoRow) + unkept.join(u' ') + (group.missingPath ? u'-' : u'+');
}

QStringList signaturesOf(const MergePlan &plan) {
  QStringList signatures;
  for (const GroupPlan &group : plan.groups) signatures << signatureOf(group);
  signatures.sort();
  return signatures;
}

}  // namespace

namespace planMarks {

std::vector<qint64> keepGroups(AppState &state, const std::optional<std::vector<qint64>> &numbers) {
  if (!numbers) return {};
  const Array &rows = std::as_const(state.lists).mDuplicateSongDicts;
  std::vector<qint64> unknown = *numbers;
  std::lock_guard held(*state.threadLockForObject(rows));
  for (qsizetype i = 0; i < rows.size(); ++i) {
    Dictionary row = rows.at(i).toDictionary();
    const qint64 group = row.value(keys::DupeGroup).toInteger();
    std::erase(unknown, group);
    if (std::find(numbers->begin(), numbers->end(), group) != numbers->end()) continue;
    row.remove(keys::markInfo);
    row.remove(keys::markAudio);
  }
  return unknown;
}

void leaveOutGroupsWithoutFiles(const MergePlan &plan, AppState &state) {
  std::vector<qint64> whole;
  for (const GroupPlan &group : plan.groups) {
    if (!group.missingPath) whole.push_back(group.number);
  }
  (void)keepGroups(state, whole);
}

void markAsIn(const MergePlan &plan, AppState &state) {
  QSet<QString> audio, info;
  for (const GroupPlan &group : plan.groups) {
    audio.insert(pidOf(group.audioRow));
    info.insert(pidOf(group.infoRow));
  }
  const Array &rows = std::as_const(state.lists).mDuplicateSongDicts;
  std::lock_guard held(*state.threadLockForObject(rows));
  for (qsizetype i = 0; i < rows.size(); ++i) {
    Dictionary row = rows.at(i).toDictionary();
    row.set(keys::markAudio, audio.contains(pidOf(row)));
    row.set(keys::markInfo, info.contains(pidOf(row)));
  }
}

qsizetype groupsToMerge(const MergePlan &plan) {
  return std::count_if(plan.groups.begin(), plan.groups.end(),
                       [](const GroupPlan &group) { return !group.missingPath; });
}

bool areSame(const MergePlan &one, const MergePlan &other) {
  return signaturesOf(one) == signaturesOf(other);
}

}  // namespace planMarks
