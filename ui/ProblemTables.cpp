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
  MarkedGroups::Range group;
  bool othersChanged = false;
  {
    std::lock_guard held(*state.threadLockForObject(list));
    if (row < 0 || row >= list.size()) return;
    group = MarkedGroups::groupAround(list, row);
    markedGroups.groupWillChange(list, group);
    list.at(row).toDictionary().set(column, value);
    othersChanged = groups.validateDuplicatesForIdentifierPreferringRowNewValue(column, qint32(row), value);
    markedGroups.groupDidChange(list, group);
  }
  if (othersChanged) state.view.reloadRows(tab, group.first, group.end);
  tellingOfClick = true;
  state.view.validateProblemUI();
  tellingOfClick = false;
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
  tellingOfClick = true;
  state.view.validateProblemUI();
  tellingOfClick = false;
}

Dictionary ProblemTables::rowOf(ProblemTab tab, qsizetype row) const {
  const Array &list = std::as_const(state.lists)[tab];
  std::lock_guard held(*state.threadLockForObject(list));
  return row >= 0 && row < list.size() ? list.at(row).toDictionary() : Dictionary();
}

ProblemUIStates ProblemTables::validateProblemUI(bool marksAreUnchanged) {
  const Array &duplicates = std::as_const(state.lists).mDuplicateSongDicts;
  {
    std::lock_guard held(*state.threadLockForObject(duplicates));
    const bool stands = (marksAreUnchanged || tellingOfClick) && markedGroups.isAbout(duplicates);
    if (!stands) markedGroups.count(duplicates);
  }
  const bool isFree = !state.view.hasSheet();
  const auto hasSelection = [this](ProblemTab tab) { return state.view.selectedRowCount(tab) > 0; };
  ProblemUIStates states;
  states.merge = isFree && markedGroups.any();
  states.ignore = hasSelection(ProblemTab::Duplicates);
  states.automark = isFree && !duplicates.isEmpty();
  states.unmark = states.automark;
  states.fixNames = isFree && hasSelection(ProblemTab::Names);
  states.orphanAdd = states.orphanDelete = isFree && hasSelection(ProblemTab::Orphans);
  states.missingDelete = isFree && hasSelection(ProblemTab::Missing);
  return states;
}
