#include "repairs/MergePlan.h"

#include <QHash>

#include "app/state/AppState.h"
#include "bridge/iTunesInterface.h"
#include "repairs/FileIdentity.h"
#include "repairs/PlaylistRepair.h"
#include "support/Format.h"
#include "values/Keys.h"

namespace {

const QString &pathOf(const Dictionary &row) {
  return row.value(keys::Path).toText();
}

/// A text for the user: an absent one is empty.
QString shown(const Value &text) {
  return text.isText() ? text.toText() : QStringLiteral("");
}

UnkeptFate plannedFate(const GroupPlan::Unkept &unkept, const GroupPlan &plan,
                       const MergeSettings &settings) {
  if (!settings.is(UnkeptPolicy::Trash) && !settings.is(UnkeptPolicy::Folder)) return UnkeptFate::Collected;
  if (unkept.path.isEmpty()) return UnkeptFate::NoPath;
  if (fileIdentity::areSameFile(unkept.path, pathOf(plan.audioRow))) return UnkeptFate::Shared;
  if (!fileIdentity::isFile(unkept.path)) return UnkeptFate::Gone;
  return settings.is(UnkeptPolicy::Trash) ? UnkeptFate::Trashed : UnkeptFate::Moved;
}

void lookForMissingFiles(GroupPlan &plan) {
  for (const Dictionary &row : {plan.audioRow, plan.infoRow}) {
    const QString path = pathOf(row);
    if (fileIdentity::isFile(path)) continue;
    plan.missingPath = path.isEmpty() ? QString() : path;
    return;
  }
}

/// The rows of the list group by group, in its order.
std::vector<std::vector<Dictionary>> groupedRows(AppState &state, const std::vector<qint64> &wanted) {
  const Array &list = state.lists.mDuplicateSongDicts;
  const ObjectLock lock = state.threadLockForObject(list);
  const std::lock_guard held(*lock);
  QHash<qint64, size_t> places;
  std::vector<std::vector<Dictionary>> groups;
  for (const Value &value : list) {
    const Dictionary &row = value.toDictionary();
    const qint64 number = row.value(keys::DupeGroup).toInteger();
    if (!wanted.empty() && std::find(wanted.begin(), wanted.end(), number) == wanted.end()) continue;
    const auto place = places.find(number);
    if (place == places.end()) {
      places.insert(number, groups.size());
      groups.push_back({row});
    } else {
      groups[*place].push_back(row);
    }
  }
  return groups;
}

}  // namespace

QStringList GroupPlan::unkeptPIDs() const {
  QStringList pids;
  for (const Unkept &one : unkept) {
    if (!one.pid.isEmpty()) pids.append(one.pid);
  }
  return pids;
}

qint64 MergePlan::unkeptRows() const {
  qint64 count = 0;
  for (const GroupPlan &group : groups) count += qint64(group.unkept.size());
  return count;
}

qint64 MergePlan::unkeptFiles() const {
  qint64 count = 0;
  for (const GroupPlan &group : groups) {
    for (const GroupPlan::Unkept &unkept : group.unkept)
      count += unkept.fate == UnkeptFate::Trashed || unkept.fate == UnkeptFate::Moved;
  }
  return count;
}

qint64 MergePlan::unkeptBytes() const {
  qint64 bytes = 0;
  for (const GroupPlan &group : groups) {
    for (const GroupPlan::Unkept &unkept : group.unkept) {
      if (unkept.fate == UnkeptFate::Trashed || unkept.fate == UnkeptFate::Moved) bytes += unkept.bytes;
    }
  }
  return bytes;
}

GroupPlan planOfGroup(const std::vector<Dictionary> &rows, const MergeSettings &settings) {
  GroupPlan plan;
  for (const Dictionary &row : rows) {
    if (plan.infoRow.isNull() && row.value(keys::markInfo).toBool()) plan.infoRow = row;
    if (plan.audioRow.isNull() && row.value(keys::markAudio).toBool()) plan.audioRow = row;
  }
  if (!rows.empty()) plan.number = rows.front().value(keys::DupeGroup).toInteger();
  if (!plan.isMarked()) return plan;
  plan.title = formatText(QStringLiteral("%@ \"%@\""),
                          {shown(plan.infoRow.value(keys::Artist)), shown(plan.infoRow.value(keys::Name))});
  lookForMissingFiles(plan);
  for (const Dictionary &row : rows) {
    if (row.isSame(plan.audioRow)) continue;
    GroupPlan::Unkept unkept;
    unkept.row = row;
    unkept.pid = row.value(keys::PersistentID).toText();
    unkept.path = pathOf(row);
    unkept.bytes = fileIdentity::sizeOfFile(unkept.path);
    unkept.fate = plannedFate(unkept, plan, settings);
    plan.unkept.push_back(std::move(unkept));
  }
  return plan;
}

void addPlaylists(std::vector<GroupPlan> &groups, const Array &playlists) {
  QHash<QString, std::vector<GroupPlan *>> groupsByPID;
  for (GroupPlan &group : groups) {
    for (const QString &pid : group.unkeptPIDs()) groupsByPID[pid].push_back(&group);
  }
  for (const Value &value : playlists) {
    const Dictionary &playlist = value.toDictionary();
    const QString name = playlist.value(keys::Name).toText();
    if (PlaylistRepair::shouldIgnorePlaylistWithName(name) || !PlaylistRepair::isUserPlaylist(playlist))
      continue;
    const Array &items = playlist.value(keys::PlaylistItems).toArray();
    const GroupPlan::Playlist told{playlist.value(keys::PlaylistPersistentID).toText(), name, items.size(),
                                   items.size() > PlaylistRepair::kHugeTracks};
    for (const Value &item : items) {
      const auto found = groupsByPID.constFind(item.toDictionary().value(keys::TrackPersistentID).toText());
      if (found == groupsByPID.constEnd()) continue;
      for (GroupPlan *const group : *found) {
        const bool isTold = !group->playlists.empty() && group->playlists.back().pid == told.pid;
        if (!isTold) group->playlists.push_back(told);
      }
    }
  }
}

MergePlan makeMergePlan(AppState &state, const MergeSettings &settings, const std::vector<qint64> &groups) {
  MergePlan plan;
  plan.settings = settings;
  for (const std::vector<Dictionary> &rows : groupedRows(state, groups)) {
    GroupPlan group = planOfGroup(rows, settings);
    if (group.isMarked()) plan.groups.push_back(std::move(group));
  }
  if (settings.noIntelligentPlaylistHandling) return plan;
  const Array direct = iTunesInterface::getDirectPlaylists();
  plan.playlistsAreKnown = !direct.isNull() && !direct.isEmpty();
  addPlaylists(plan.groups, plan.playlistsAreKnown ? direct : state.changes.playlists());
  return plan;
}
