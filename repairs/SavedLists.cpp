#include "repairs/SavedLists.h"

#include <QSet>
#include <limits>

#include "values/Keys.h"

namespace {

/// More groups than any library has. The merge walks over all numbers up to the last.
constexpr qint64 kHighestGroup = 10'000'000;

bool holdsDictionaries(const Array &rows) {
  for (const Value &row : rows) {
    if (row.toDictionary().isNull()) return false;
  }
  return true;
}

/// True if each group's rows stand together, under a number that no other group has.
bool groupsHoldTogether(const Array &rows) {
  QSet<qint64> seen;
  qint64 current = 0;
  for (const Value &row : rows) {
    const Value &number = row.toDictionary().value(keys::DupeGroup);
    const qint64 group = number.type() == Value::Type::Integer ? number.toInteger() : 0;
    if (group < 1 || group > kHighestGroup) return false;
    if (group == current) continue;
    if (seen.contains(group)) return false;
    seen.insert(group);
    current = group;
  }
  return true;
}

/// A name's songs, by which its row is shown and repaired.
bool namesHaveSongs(const Array &rows) {
  for (const Value &row : rows) {
    const Array &songs = row.toDictionary().value(keys::inconSongs).toArray();
    if (songs.isEmpty() || !holdsDictionaries(songs)) return false;
  }
  return true;
}

/// Nothing if the value is no list of dictionaries.
std::optional<Array> listOf(const Value &value) {
  const Array &rows = value.toArray();
  if (rows.isNull() || !rows.isMutable() || !holdsDictionaries(rows)) return std::nullopt;
  return rows;
}

qint32 counter(const Value &value) {
  if (!value.isNumber()) return 0;
  return qint32(qBound(qint64(0), value.toInteger(), qint64(std::numeric_limits<qint32>::max() / 2)));
}

}  // namespace

std::optional<SavedLists> SavedLists::fromDictionary(const Dictionary &root) {
  SavedLists saved;
  const Key listKeys[] = {keys::mDuplicateSongDicts, keys::mInconsistentNameDicts, keys::mOrphanSongDicts,
                          keys::mMissingSongDicts};
  for (const ProblemTab tab : kProblemTabs) {
    const std::optional<Array> rows = listOf(root.value(listKeys[int(tab)]));
    if (!rows) return std::nullopt;
    saved.lists[tab] = *rows;
  }
  if (!groupsHoldTogether(saved.lists.mDuplicateSongDicts)) return std::nullopt;
  if (!namesHaveSongs(saved.lists.mInconsistentNameDicts)) return std::nullopt;
  const Value &tab = root.value(keys::problemTabIndex);
  const qint64 index = tab.isNumber() ? tab.toInteger() : -1;
  if (index >= 0 && index < kProblemTabCount) saved.tab = ProblemTab(index);
  saved.completedBeforeRestart = counter(root.value(keys::mNumberCompletedBeforeRestart));
  saved.noProgressRestarts = counter(root.value(keys::mNumberOfNoProgressRestarts));
  const Value &locked = root.value(keys::mScriptLockedBeforeRestart);
  saved.scriptLocked = locked.isNumber() && locked.toBool();
  return saved;
}
