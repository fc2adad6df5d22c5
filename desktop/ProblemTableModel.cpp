#include "desktop/ProblemTableModel.h"

#include "bridge/LocalizedMessage.h"
#include "values/Keys.h"

ProblemTableModel::ProblemTableModel(AppState &appState, ProblemTab problemTab)
    : state(appState), tab(problemTab), columns(columnsOfTab(problemTab)) {
  reload();
}

int ProblemTableModel::rowCount(const QModelIndex &parent) const {
  return parent.isValid() ? 0 : shownRows;
}

int ProblemTableModel::columnCount(const QModelIndex &parent) const {
  return parent.isValid() ? 0 : int(columns.size());
}

QVariant ProblemTableModel::data(const QModelIndex &index, int role) const {
  if (!index.isValid()) return {};
  const ProblemColumn &column = columns[size_t(index.column())];
  switch (role) {
    case Qt::DisplayRole: {
      std::lock_guard held(*state.threadLockForObject(list()));
      return columnText(column, list().at(index.row()).toDictionary());
    }
    case Qt::TextAlignmentRole:
      return int((column.isRightAligned() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    case kStripeRole:
      return isStriped(index.row());
    default:
      return {};
  }
}

QVariant ProblemTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const ProblemColumn &column = columns[size_t(section)];
  if (role == Qt::DisplayRole) return localizedMessage(column.titleKey);
  if (role == Qt::TextAlignmentRole) {
    return int((column.isRightAligned() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  }
  return {};
}

bool ProblemTableModel::isStriped(int index) const {
  if (tab != ProblemTab::Duplicates) return index % 2 == 0;
  return row(index).value(keys::UIStripe).toBool();
}

bool ProblemTableModel::reload() {
  const Array now = list();
  int count = 0;
  bool onlyAppended = false;
  Dictionary last;
  {
    std::lock_guard held(*state.threadLockForObject(now));
    count = int(qMin<qsizetype>(now.size(), std::numeric_limits<int>::max()));
    onlyAppended = now.isSame(shownList) && count >= shownRows &&
                   (shownRows == 0 || now.at(shownRows - 1).toDictionary().isSame(lastRow));
    last = now.at(count - 1).toDictionary();
  }
  lastRow = last;
  shownList = now;
  if (!onlyAppended) {
    beginResetModel();
    shownRows = count;
    countGroups();
    endResetModel();
    return true;
  }
  const int before = shownRows;
  if (count > before) {
    beginInsertRows({}, before, count - 1);
    shownRows = count;
    countGroups();
    endInsertRows();
  }
  if (before > 0) Q_EMIT dataChanged(index(0, 0), index(before - 1, columnCount() - 1));
  return false;
}

void ProblemTableModel::countGroups() {
  groups = 0;
  if (tab != ProblemTab::Duplicates) return;
  std::lock_guard held(*state.threadLockForObject(list()));
  qint64 last = 0;
  for (int i = 0; i < shownRows; ++i) {
    const qint64 group = list().at(i).toDictionary().value(keys::DupeGroup).toInteger();
    if (group != last) ++groups;
    last = group;
  }
}

Dictionary ProblemTableModel::row(int index) const {
  std::lock_guard held(*state.threadLockForObject(list()));
  return list().at(index).toDictionary();
}

std::vector<Dictionary> ProblemTableModel::rowsAt(const std::vector<int> &indexes) const {
  std::vector<Dictionary> rows;
  rows.reserve(indexes.size());
  std::lock_guard held(*state.threadLockForObject(list()));
  for (const int i : indexes) rows.push_back(list().at(i).toDictionary());
  return rows;
}

std::vector<int> ProblemTableModel::indexesOf(const QSet<const void *> &identities) const {
  std::vector<int> indexes;
  if (identities.isEmpty()) return indexes;
  std::lock_guard held(*state.threadLockForObject(list()));
  const int count = int(qMin<qsizetype>(shownRows, list().size()));
  for (int i = 0; i < count; ++i) {
    if (identities.contains(list().at(i).toDictionary().identity())) indexes.push_back(i);
  }
  return indexes;
}

QString ProblemTableModel::rowText(int index, const std::vector<int> &chosen) const {
  QStringList texts;
  std::lock_guard held(*state.threadLockForObject(list()));
  const Dictionary found = list().at(index).toDictionary();
  for (const int column : chosen) texts.append(columnText(columns[size_t(column)], found));
  return texts.join(u'\t');
}
