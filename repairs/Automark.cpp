#include "repairs/Automark.h"

#include <algorithm>

#include "app/PrefsController.h"
#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "platform/Platform.h"
#include "repairs/MarkChooser.h"
#include "scanners/DuplicateGroups.h"
#include "support/BMLog.h"
#include "values/Keys.h"

namespace {

bool isMark(const DictionaryEntry &entry) {
  return entry.key == keys::markInfo || entry.key == keys::markAudio;
}

/// One look at the row, which mostly lies in far memory.
void unmark(const Dictionary &row) {
  if (std::any_of(row.begin(), row.end(), isMark)) row.removeIf(isMark);
}

/// What a row's mark has to become; most stay as they are.
class MarkChange {
 public:
  MarkChange(const Value &present, bool isWanted, bool clears)
      : sets(isWanted && !present.toBool()), removes(!isWanted && clears && !present.isNull()) {}

  void applyTo(const Dictionary &row, Key mark) const {
    if (sets) row.set(mark, true);
    if (removes) row.remove(mark);
  }

 private:
  const bool sets, removes;
};

std::optional<qint64> sizeOnDisk(const QString &path) {
  return platform().fileFacts->fileSize(path);
}

}  // namespace

Automark::Automark(AppState &appState, DuplicateGroups &duplicateGroups)
    : state(appState), groups(duplicateGroups) {}

void Automark::doAutomark() {
  doAutomarkFromPreferences();
}

void Automark::doUnmark() {
  const std::vector<Dictionary> selected = state.view.selectedRows(ProblemTab::Duplicates);
  if (selected.size() > 1) {
    for (const Dictionary &row : selected) unmark(row);
  } else {
    for (const Value &row : state.lists.mDuplicateSongDicts) unmark(row.toDictionary());
  }
  showMarks();
}

void Automark::doAutomarkFromPreferences() {
  const Date start = platform().clock->now();
  state.commands->noteAppliedAutomarkValues();
  if (!kinds) kinds.emplace(PrefsController::resources().value(keys::kinds).toDictionary());
  const AutomarkRules rules = AutomarkRules::fromPreferences();
  const std::optional<QSet<qint64>> wanted = groups.selectedDupeGroupsExpand(false);
  if (wanted) doUnmark();
  markGroups(rules, wanted);
  const float seconds = float(platform().clock->now().seconds - start.seconds);
  if (seconds > 1.0F) {
    BMLog("[!] automark took %.2f secs for %d items", double(seconds),
          int(state.lists.mDuplicateSongDicts.size()));
  }
  showMarks();
}

void Automark::markGroups(const AutomarkRules &rules, const std::optional<QSet<qint64>> &wanted) {
  const FileSizeOf fileSize = sizeOnDisk;
  MarkChooser chooser(rules, *kinds, fileSize);
  choices.clear();
  const Array &rows = state.lists.mDuplicateSongDicts;
  std::vector<AutomarkRow> group;
  for (qsizetype next = 0; next < rows.size(); next += qsizetype(group.size())) {
    gatherGroup(next, group);
    if (wanted && !wanted->contains(group.front().group())) continue;
    choices.push_back({next, qsizetype(group.size()), chooser.choose(group)});
    // Without a selection no old mark may stay; with one they are gone already where they have to.
    setMarks(choices.back(), group, !wanted);
  }
}

// Each row is read once: a row that has left the nearest memory costs more than all that is asked of it.
void Automark::gatherGroup(qsizetype first, std::vector<AutomarkRow> &group) const {
  const Array &rows = state.lists.mDuplicateSongDicts;
  group.clear();
  for (qsizetype place = first; place < rows.size(); ++place) {
    group.emplace_back(rows.at(place).toDictionary());
    if (group.back().group() == group.front().group()) continue;
    group.pop_back();
    return;
  }
}

void Automark::setMarks(const Choice &choice, const std::vector<AutomarkRow> &group, bool clearsOthers) {
  const Array &rows = state.lists.mDuplicateSongDicts;
  for (qsizetype place = 0; place < choice.rowCount; ++place) {
    const AutomarkRow &gathered = group[size_t(place)];
    const Dictionary &row = rows.at(choice.firstRow + place).toDictionary();
    // Both are looked at before the row changes, from which they are borrowed.
    const MarkChange info(gathered.markInfo(), place == choice.marks.infoRow, clearsOthers);
    const MarkChange audio(gathered.markAudio(), place == choice.marks.audioRow, clearsOthers);
    info.applyTo(row, keys::markInfo);
    audio.applyTo(row, keys::markAudio);
  }
}

void Automark::showMarks() {
  state.view.reloadTable(ProblemTab::Duplicates);
  state.view.validateProblemUI();
}
