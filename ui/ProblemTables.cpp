#include "ui/ProblemTables.h"

#include "app/state/AppState.h"
#include "scanners/DuplicateGroups.h"
#include "values/Keys.h"

ProblemTables::ProblemTables(AppState &appState, DuplicateGroups &duplicateGroups,
                             const InconNameController &names, const Dictionary &resources)
    : state(appState),
      groups(duplicateGroups),
      mInconNameController(names),
      calculatedValues(resources, [this](const Dictionary &row) {
        return valueOfStyledText(
            mInconNameController.calculatedInconsistentAttributedStringForDictionary(row));
      }) {}

Value ProblemTables::tableViewObjectValueForTableColumnRow(ProblemTab tab, Key column, qsizetype row) const {
  const Array &list = std::as_const(state.lists)[tab];
  if (row < 0) return {};
  std::lock_guard held(*state.threadLockForObject(list));
  if (row >= list.size()) return {};
  const Dictionary dictionary = list.at(row).toDictionary();
  Value value = dictionary.value(column);
  if (value.isNull() && column.text().startsWith(QStringLiteral("calc_"))) {
    value = calculatedValues.calculatedValueForDictionaryKey(dictionary, column);
  }
  if (column == keys::Year && value.isNumber()) return QString::number(value.toInteger());
  return value;
}

void ProblemTables::tableViewSetObjectValueForTableColumnRow(ProblemTab tab, const Value &value, Key column,
                                                             qsizetype row) {
  const bool isMark = column == keys::markInfo || column == keys::markAudio;
  if (tab != ProblemTab::Duplicates || !isMark) return;
  if (state.view.hasSheet()) return state.view.beep();
  const Array list = state.lists.mDuplicateSongDicts;
  MarkedGroups::Range changed;
  {
    std::lock_guard held(*state.threadLockForObject(list));
    if (row < 0 || row >= list.size()) return;
    changed = storeMark(list, value, column, row);
  }
  if (changed.end > changed.first) state.view.reloadRows(tab, changed.first, changed.end);
  validateAfterClick();
}

MarkedGroups::Range ProblemTables::storeMark(const Array &list, const Value &value, Key mark, qsizetype row) {
  const MarkedGroups::Range group = MarkedGroups::groupAround(list, row);
  markedGroups.groupWillChange(list, group);
  list.at(row).toDictionary().set(mark, value);
  const bool othersChanged =
      groups.validateDuplicatesForIdentifierPreferringRowNewValue(mark, qint32(row), value);
  markedGroups.groupDidChange(list, group);
  return othersChanged ? group : MarkedGroups::Range();
}

void ProblemTables::toggleMarks(const std::vector<qsizetype> &rows, const std::vector<Key> &marks) {
  if (state.view.hasSheet()) return state.view.beep();
  const Array list = state.lists.mDuplicateSongDicts;
  MarkedGroups::Range changed{list.size(), 0};
  {
    std::lock_guard held(*state.threadLockForObject(list));
    std::vector<qsizetype> first;
    qsizetype endOfLast = 0;
    for (const qsizetype row : rows) {
      if (row < endOfLast || row >= list.size()) continue;
      first.push_back(row);
      endOfLast = MarkedGroups::groupAround(list, row).end;
    }
    const bool allHaveThem = std::all_of(first.begin(), first.end(), [&](qsizetype row) {
      const Dictionary &dictionary = list.at(row).toDictionary();
      return std::all_of(marks.begin(), marks.end(),
                         [&](Key mark) { return dictionary.value(mark).toBool(); });
    });
    for (const qsizetype row : first) {
      for (const Key mark : marks) storeMark(list, !allHaveThem, mark, row);
      const MarkedGroups::Range group = MarkedGroups::groupAround(list, row);
      changed = {qMin(changed.first, group.first), qMax(changed.end, group.end)};
    }
  }
  if (changed.end > changed.first) {
    state.view.reloadRows(ProblemTab::Duplicates, changed.first, changed.end);
  }
  validateAfterClick();
}

bool ProblemTables::tableViewStripeForRow(ProblemTab tab, qsizetype row) const {
  if (tab != ProblemTab::Duplicates) return row % 2 == 0;
  return rowOf(tab, row).value(keys::UIStripe).toBool();
}

void ProblemTables::tableDidMouseDownWithEvent(qsizetype row, float x,
                                               const InconNameController::Layout &layout) {
  if (state.view.currentTab() != ProblemTab::Names) return;
  const Dictionary dictionary = rowOf(ProblemTab::Names, row);
  if (dictionary.isNull()) return;
  const auto chosen = mInconNameController.userChoosePreferredForDictionaryUsingXPoint(dictionary, x, layout);
  if (chosen) afterUserChoice(dictionary, row);
}

void ProblemTables::choosePreferredSong(qsizetype row, qint32 songIndex) {
  const Dictionary dictionary = rowOf(ProblemTab::Names, row);
  if (dictionary.isNull()) return;
  if (state.view.hasSheet()) return state.view.beep();
  if (mInconNameController.userChoosePreferredForDictionaryUsingSong(dictionary, songIndex)) {
    afterUserChoice(dictionary, row);
  }
}

void ProblemTables::afterUserChoice(const Dictionary &row, qsizetype index) {
  {
    std::lock_guard held(*state.threadLockForObject(state.lists.mInconsistentNameDicts));
    if (row.isMutable()) row.remove(keys::calc_inconsistentName);
  }
  state.view.reloadRows(ProblemTab::Names, index, index + 1);
  validateAfterClick();
}

void ProblemTables::validateAfterClick() {
  tellingOfClick = true;
  state.view.validateProblemUI();
  tellingOfClick = false;
}

std::vector<SpellingChoice> ProblemTables::spellingsOfRow(qsizetype row) const {
  const Array &list = std::as_const(state.lists).mInconsistentNameDicts;
  std::lock_guard held(*state.threadLockForObject(list));
  if (row < 0 || row >= list.size()) return {};
  return spellingChoicesOf(list.at(row).toDictionary());
}

Dictionary ProblemTables::rowOf(ProblemTab tab, qsizetype row) const {
  const Array &list = std::as_const(state.lists)[tab];
  std::lock_guard held(*state.threadLockForObject(list));
  return row >= 0 && row < list.size() ? list.at(row).toDictionary() : Dictionary();
}

ProblemUIStates ProblemTables::validateProblemUI(bool marksAreUnchanged) {
  const Array &duplicates = std::as_const(state.lists).mDuplicateSongDicts;
  bool hasDuplicates = false;
  {
    std::lock_guard held(*state.threadLockForObject(duplicates));
    const bool stands = (marksAreUnchanged || tellingOfClick) && markedGroups.isAbout(duplicates);
    if (!stands) markedGroups.count(duplicates);
    hasDuplicates = !duplicates.isEmpty();
  }
  const bool isFree = !state.view.hasSheet();
  const auto hasSelection = [this](ProblemTab tab) { return state.view.selectedRowCount(tab) > 0; };
  ProblemUIStates states;
  states.merge = isFree && markedGroups.any();
  states.ignore = hasSelection(ProblemTab::Duplicates);
  states.automark = isFree && hasDuplicates;
  states.unmark = states.automark;
  states.fixNames = isFree && hasSelection(ProblemTab::Names);
  states.orphanAdd = states.orphanDelete = isFree && hasSelection(ProblemTab::Orphans);
  states.missingDelete = isFree && hasSelection(ProblemTab::Missing);
  return states;
}
