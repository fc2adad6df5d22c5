#include "repairs/MergePlan.h"

#include <QHash>
#include <functional>

#include "app/state/AppState.h"
#include "bridge/iTunesInterface.h"
#include "repairs/FileIdentity.h"
#include "repairs/PlaylistRepair.h"
#include "repairs/SharedPaths.h"
#include "repairs/UserPlaylists.h"
#include "support/Format.h"
#include "values/Keys.h"

namespace {

/// A text for the user: an absent one is empty.
QString shown(const Value &text) {
  return text.isText() ? text.toText() : QStringLiteral("");
}

UnkeptFate plannedFate(const GroupPlan::Unkept &unkept, const GroupPlan &plan,
                       const MergeSettings &settings) {
  if (!settings.removesTracks()) return UnkeptFate::Collected;
  if (unkept.pid == pidOf(plan.audioRow)) return UnkeptFate::Shared;
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

/// The tracks of rows, as entries of playlists name them.
class TrackNames {
 public:
  void add(const Dictionary &row, qsizetype index) {
    const QString &pid = pidOf(row);
    if (pid.isEmpty()) return;
    byPID[pid].push_back(index);
    const qint64 number = row.value(keys::TrackID).toInteger();
    if (number) byNumber[number].push_back(index);
  }
  /// What was added for the track of an entry.
  std::vector<qsizetype> of(const Dictionary &entry) const {
    const Value &pid = entry.value(keys::TrackPersistentID);
    return pid.isText() ? byPID.value(pid.toText()) : byNumber.value(entry.value(keys::TrackID).toInteger());
  }

 private:
  QHash<QString, std::vector<qsizetype>> byPID;
  QHash<qint64, std::vector<qsizetype>> byNumber;
};

/// Shows each entry of the user's own playlists.
void visitEntries(const Array &playlists,
                  const std::function<void(const Dictionary &playlist, const Dictionary &entry)> &visit) {
  for (const Value &value : playlists) {
    const Dictionary &playlist = value.toDictionary();
    if (!UserPlaylists::isOrdinary(playlist)) continue;
    const Array &items = playlist.value(keys::PlaylistItems).toArray();
    for (const Value &item : items) visit(playlist, item.toDictionary());
  }
}

bool takesFile(UnkeptFate fate) {
  return fate == UnkeptFate::Trashed || fate == UnkeptFate::Moved;
}

}  // namespace

const QString &pathOf(const Dictionary &row) {
  return row.value(keys::Path).toText();
}

const QString &pidOf(const Dictionary &row) {
  return row.value(keys::PersistentID).toText();
}

QStringList GroupPlan::unkeptPIDs() const {
  QStringList pids;
  for (const Unkept &one : unkept) {
    if (!one.pid.isEmpty() && one.pid != pidOf(audioRow)) pids.append(one.pid);
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
    for (const GroupPlan::Unkept &unkept : group.unkept) count += takesFile(unkept.fate);
  }
  return count;
}

qint64 MergePlan::unkeptBytes() const {
  qint64 bytes = 0;
  for (const GroupPlan &group : groups) {
    for (const GroupPlan::Unkept &unkept : group.unkept) {
      if (takesFile(unkept.fate)) bytes += unkept.bytes;
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
    unkept.pid = pidOf(row);
    unkept.path = pathOf(row);
    unkept.bytes = fileIdentity::sizeOfFile(unkept.path);
    unkept.fate = plannedFate(unkept, plan, settings);
    plan.unkept.push_back(std::move(unkept));
  }
  return plan;
}

void adjustToSharedFiles(std::vector<GroupPlan> &groups, SharedPaths shared) {
  QSet<QString> taken;
  for (GroupPlan &group : groups) {
    if (group.missingPath) continue;
    for (GroupPlan::Unkept &unkept : group.unkept) {
      if (takesFile(unkept.fate) && shared.isNamedByMoreThan(unkept.path, 1)) {
        unkept.fate = UnkeptFate::Shared;
      } else if (takesFile(unkept.fate)) {
        if (taken.contains(unkept.path)) unkept.fate = UnkeptFate::Gone;
        taken.insert(unkept.path);
      }
      if (unkept.pid != pidOf(group.audioRow)) shared.trackIsGone(unkept.path);
    }
  }
}

void addPlaylists(std::vector<GroupPlan> &groups, const Array &playlists) {
  TrackNames tracks;
  for (size_t group = 0; group < groups.size(); ++group) {
    for (const GroupPlan::Unkept &unkept : groups[group].unkept) {
      if (unkept.pid != pidOf(groups[group].audioRow)) tracks.add(unkept.row, qsizetype(group));
    }
  }
  visitEntries(playlists, [&](const Dictionary &playlist, const Dictionary &entry) {
    for (const qsizetype group : tracks.of(entry)) {
      std::vector<GroupPlan::Playlist> &told = groups[size_t(group)].playlists;
      const QString &pid = playlist.value(keys::PlaylistPersistentID).toText();
      if (!told.empty() && told.back().pid == pid) continue;
      const qint64 entries = playlist.value(keys::PlaylistItems).toArray().size();
      told.push_back(
          {pid, playlist.value(keys::Name).toText(), entries, entries > PlaylistRepair::kHugeTracks});
    }
  });
}

QSet<QString> listedTracksInPlaylists(const Array &rows, const Array &playlists) {
  TrackNames tracks;
  for (qsizetype row = 0; row < rows.size(); ++row) tracks.add(rows.at(row).toDictionary(), row);
  QSet<QString> found;
  visitEntries(playlists, [&](const Dictionary &, const Dictionary &entry) {
    for (const qsizetype row : tracks.of(entry)) found.insert(pidOf(rows.at(row).toDictionary()));
  });
  return found;
}

MergePlan makeMergePlan(AppState &state, const MergeSettings &settings, const std::vector<qint64> &groups) {
  MergePlan plan;
  plan.settings = settings;
  for (const std::vector<Dictionary> &rows : groupedRows(state, groups)) {
    GroupPlan group = planOfGroup(rows, settings);
    if (group.isMarked()) plan.groups.push_back(std::move(group));
  }
  if (settings.removesTracks()) {
    adjustToSharedFiles(plan.groups,
                        SharedPaths(state.library.mMusicLibraryPaths, state.lists.mDuplicateSongDicts));
  }
  if (settings.noIntelligentPlaylistHandling) return plan;
  const Array direct = iTunesInterface::getDirectPlaylists();
  plan.playlistsAreKnown = !direct.isNull() && !direct.isEmpty();
  // The numbers of tracks in a file that was written later may be others.
  addPlaylists(plan.groups, plan.playlistsAreKnown
                                ? direct
                                : state.library.mMusicLibrary.value(keys::Playlists).toArray());
  return plan;
}
