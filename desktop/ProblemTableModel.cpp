#include "desktop/ProblemTableModel.h"

#include "bridge/LocalizedMessage.h"
#include "desktop/SpellingTexts.h"
#include "desktop/ToolTips.h"
#include "values/Keys.h"

ProblemTableModel::ProblemTableModel(AppState &appState, ProblemTables &problemTables, ProblemTab problemTab)
    : state(appState), tables(problemTables), tab(problemTab), columns(columnsOfTab(problemTab)) {
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
    case Qt::DisplayRole:
      return column.isMark() ? QString() : columnText(column, value(index.row(), index.column()));
    case Qt::CheckStateRole:
      if (!column.isMark()) return {};
      return value(index.row(), index.column()).toBool() ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole:
      return int(column.alignment());
    case Qt::ToolTipRole:
      if (column.format == ColumnFormat::Spellings) return spellingsToolTip(index.row());
      return column.isMark() ? markText(index) : QVariant();
    case Qt::AccessibleTextRole:
      return column.isMark() ? markText(index) : QVariant();
    case kStripeRole:
      return tables.tableViewStripeForRow(tab, index.row());
    default:
      return {};
  }
}

Value ProblemTableModel::value(int row, int column) const {
  return tables.tableViewObjectValueForTableColumnRow(tab, columns[size_t(column)].key, row);
}

QString ProblemTableModel::markText(const QModelIndex &index) const {
  const bool on = value(index.row(), index.column()).toBool();
  return localizedMessage(QStringLiteral("Cell-%1-%2")
                              .arg(columns[size_t(index.column())].key.text(),
                                   on ? QStringLiteral("on") : QStringLiteral("off")));
}

QString ProblemTableModel::spellingsToolTip(int row) const {
  QStringList lines;
  for (const SpellingChoice &choice : tables.spellingsOfRow(row)) {
    const QString line = spellingLine(choice);
    lines.append(choice.isPreferred ? localizedMessage(QStringLiteral("Spelling-ToolTipPreferred"), line)
                                    : line);
  }
  if (lines.isEmpty()) return {};
  return localizedMessage(QStringLiteral("Spelling-ToolTipTitle")) + u'\n' + lines.join(u'\n');
}

bool ProblemTableModel::setData(const QModelIndex &index, const QVariant &value, int role) {
  if (!index.isValid() || role != Qt::CheckStateRole || !columns[size_t(index.column())].isMark())
    return false;
  const bool on = value.toInt() == Qt::Checked;
  tables.tableViewSetObjectValueForTableColumnRow(tab, on, columns[size_t(index.column())].key, index.row());
  Q_EMIT dataChanged(index, index);
  return true;
}

Qt::ItemFlags ProblemTableModel::flags(const QModelIndex &index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
  return index.isValid() && columns[size_t(index.column())].isMark() ? flags | Qt::ItemIsUserCheckable
                                                                     : flags;
}

QVariant ProblemTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const ProblemColumn &column = columns[size_t(section)];
  if (role == Qt::DisplayRole) {
    const QString title = localizedMessage(column.titleKey);
    // The cells keep the same distance from the next column.
    return column.alignment() & Qt::AlignRight ? title + QChar(0x2002) : title;
  }
  if (role == Qt::TextAlignmentRole) return int(column.alignment());
  if (role == Qt::ToolTipRole) return toolTips::fromPlainText(columnToolTip(column));
  return {};
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
    countGroupsFrom(0);
    endResetModel();
    return true;
  }
  const int before = shownRows;
  if (count > before) {
    beginInsertRows({}, before, count - 1);
    shownRows = count;
    countGroupsFrom(before);
    endInsertRows();
  }
  if (before > 0) Q_EMIT dataChanged(index(0, 0), index(before - 1, columnCount() - 1));
  return false;
}

void ProblemTableModel::reloadRows(int first, int end) {
  constexpr int kMostSingleRows = 100;
  end = qMin(end, shownRows);
  if (first < 0 || first >= end) return;
  if (end - first > kMostSingleRows) {
    Q_EMIT dataChanged(index(first, 0), index(end - 1, columnCount() - 1));
    return;
  }
  // A change told for one cell has just this cell painted; one told for several has the whole view painted.
  for (int column = 0; column < columnCount(); ++column) {
    const ColumnFormat format = columns[size_t(column)].format;
    if (format != ColumnFormat::Mark && format != ColumnFormat::Spellings) continue;
    for (int row = first; row < end; ++row) Q_EMIT dataChanged(index(row, column), index(row, column));
  }
}

void ProblemTableModel::countGroupsFrom(int first) {
  if (tab != ProblemTab::Duplicates) return;
  std::lock_guard held(*state.threadLockForObject(list()));
  if (first == 0) groups = 0;
  for (int i = first; i < shownRows; ++i) {
    const qint64 group = list().at(i).toDictionary().value(keys::DupeGroup).toInteger();
    if (i == 0 || group != lastGroup) ++groups;
    lastGroup = group;
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
  for (const int column : chosen) texts.append(columnText(columns[size_t(column)], value(index, column)));
  return texts.join(u'\t');
}
