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

qint64 groupNumber(const Array &rows, qsizetype place) {
  return rows.at(place).toDictionary().value(keys::DupeGroup).toInteger();
}

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
  doUnmark();
  markGroups(rules, groups.selectedDupeGroupsExpand(false));
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
  std::vector<Dictionary> group;
  qint64 nextNumber = groupNumber(rows, 0);
  for (qsizetype next = 0; next < rows.size();) {
    Choice choice;
    choice.firstRow = next;
    const qint64 number = nextNumber;
    group.clear();
    do {
      group.push_back(rows.at(next++).toDictionary());
      nextNumber = groupNumber(rows, next);
    } while (next < rows.size() && nextNumber == number);
    if (wanted && !wanted->contains(number)) continue;
    choice.rowCount = next - choice.firstRow;
    choice.marks = chooser.choose(group);
    group[size_t(choice.marks.infoRow)].set(keys::markInfo, true);
    group[size_t(choice.marks.audioRow)].set(keys::markAudio, true);
    choices.push_back(choice);
  }
}

void Automark::showMarks() {
  state.view.reloadTable(ProblemTab::Duplicates);
  state.view.validateProblemUI();
}
