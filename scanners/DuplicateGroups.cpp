#include "scanners/DuplicateGroups.h"

#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "bridge/LocalizedMessage.h"
#include "scanners/GroupDeclaration.h"
#include "values/Keys.h"

namespace {

const Dictionary &rowAt(const Array &rows, qsizetype index) {
  return rows.at(index).toDictionary();
}

qint64 groupOf(const Dictionary &row) {
  return row.value(keys::DupeGroup).toInteger();
}

bool isMarked(const Dictionary &row, Key mark) {
  return row.value(mark).toBool();
}

Alert sheetOf(const QString &title, const QString &message, const QStringList &buttons) {
  Alert alert;
  alert.key = title;
  alert.title = localizedMessage(title);
  alert.message = localizedMessage(message);
  for (const QString &button : buttons) alert.buttons.append(localizedMessage(button));
  return alert;
}

}  // namespace

void DuplicateGroups::setStripesForDupesFromIndex(qint32 index) {
  const Array &rows = state.lists.mDuplicateSongDicts;
  const ObjectLock lock = state.threadLockForObject(rows);
  const std::lock_guard held(*lock);
  bool stripe = false;
  qint32 group = 1;
  if (index >= 1) {
    const Dictionary &before = rowAt(rows, index - 1);
    stripe = before.value(keys::UIStripe).toBool();
    group = qint32(groupOf(before));
  }
  for (qsizetype place = qMax(index, 0); place < rows.size(); ++place) {
    const Dictionary &row = rowAt(rows, place);
    const auto own = qint32(groupOf(row));
    if (own != group) stripe = !stripe;
    group = own;
    const Value &shown = row.value(keys::UIStripe);
    if (shown.isNull() || shown.toBool() != stripe) row.set(keys::UIStripe, stripe);
  }
}

Array DuplicateGroups::duplicateSongDictsWithTopPostponed() {
  const Array &rows = state.lists.mDuplicateSongDicts;
  const ObjectLock lock = state.threadLockForObject(rows);
  const std::lock_guard held(*lock);
  const qint64 first = groupOf(rowAt(rows, 0));
  const qint64 last = groupOf(rowAt(rows, rows.size() - 1));
  qsizetype top = 0;
  for (; top < rows.size() && groupOf(rowAt(rows, top)) == first; ++top) {
    rowAt(rows, top).set(keys::DupeGroup, last + 1);
  }
  if (top < 2) return rows;
  const Array postponed = Array::make();
  postponed.reserve(rows.size());
  for (qsizetype index = top; index < rows.size(); ++index) postponed.append(rows.at(index));
  for (qsizetype index = 0; index < top; ++index) postponed.append(rows.at(index));
  return postponed;
}

bool DuplicateGroups::validateDuplicatesForIdentifierPreferringRowNewValue(Key identifier, qint32 row,
                                                                           const Value &newValue) {
  const Array &rows = state.lists.mDuplicateSongDicts;
  if (!newValue.toBool() || row < 0 || row >= rows.size()) return false;
  const ObjectLock lock = state.threadLockForObject(rows);
  const std::lock_guard held(*lock);
  const Dictionary preferred = rowAt(rows, row);
  const qint64 group = groupOf(preferred);
  qsizetype first = row;
  while (first > 0 && groupOf(rowAt(rows, first - 1)) == group) --first;
  bool changed = false;
  int informationRows = 0, audioRows = 0;
  for (qsizetype index = first; index < rows.size() && groupOf(rowAt(rows, index)) == group; ++index) {
    const Dictionary &member = rowAt(rows, index);
    if (!member.isSame(preferred) && isMarked(member, identifier)) {
      member.remove(identifier);
      changed = true;
    }
    informationRows += isMarked(member, keys::markInfo) ? 1 : 0;
    audioRows += isMarked(member, keys::markAudio) ? 1 : 0;
  }
  if (informationRows && audioRows) return changed;
  preferred.set(audioRows ? keys::markInfo : keys::markAudio, true);
  return true;
}

std::optional<QSet<qint64>> DuplicateGroups::selectedDupeGroupsExpand(bool expand) {
  const std::vector<Dictionary> selected = state.view.selectedRows(ProblemTab::Duplicates);
  if (selected.size() < 2) return std::nullopt;
  QSet<qint64> groups;
  for (const Dictionary &row : selected) groups.insert(groupOf(row));
  if (!expand) return groups;
  std::vector<Dictionary> grown;
  for (const Value &value : state.lists.mDuplicateSongDicts) {
    const Dictionary &row = value.toDictionary();
    if (groups.contains(groupOf(row))) grown.push_back(row);
  }
  state.view.selectRows(ProblemTab::Duplicates, grown);
  return groups;
}

bool DuplicateGroups::anyGroupHasTwoSelectedRows() const {
  QSet<qint64> groups;
  for (const Dictionary &row : state.view.selectedRows(ProblemTab::Duplicates)) {
    const qint64 group = groupOf(row);
    if (groups.contains(group)) return true;
    groups.insert(group);
  }
  return false;
}

void DuplicateGroups::ignoreSelectedDuplicates() {
  state.view.rememberSelection();
  if (!anyGroupHasTwoSelectedRows()) {
    Alert refusal =
        sheetOf(QStringLiteral("BadSelNotDuplicatesTitle"), QStringLiteral("BadSelNotDuplicatesMessage"),
                {QStringLiteral("BadSelNotDuplicatesButton")});
    refusal.critical = true;
    return state.view.beginSheet(refusal, [](int) {});
  }
  const Alert question = sheetOf(
      QStringLiteral("RememberNotDuplicatesTitle"), QStringLiteral("RememberNotDuplicatesMessage"),
      {QStringLiteral("RememberNotDuplicatesDefault"), QStringLiteral("RememberNotDuplicatesAlternate")});
  state.view.beginSheet(question, [declare = tasks.guarded([this] { declareSelectedRows(); })](int button) {
    if (button == 0) declare();
  });
}

void DuplicateGroups::declareSelectedRows() {
  const Array selected = Array::make();
  for (const Dictionary &row : state.view.selectedRows(ProblemTab::Duplicates)) selected.append(row);
  ignoreRows(selected);
}

int DuplicateGroups::ignoreRows(const Array &rows) {
  const DeclaredGroups declared = declareNoDuplicates(state, rows);
  if (declared.needsStripes) setStripesForDupesFromIndex(0);
  state.view.reloadTable(ProblemTab::Duplicates);
  state.view.restoreSelection();
  state.commands->updateProblemNumbers();
  return declared.declarations;
}
