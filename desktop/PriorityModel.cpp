#include "desktop/PriorityModel.h"

#include <QMimeData>

namespace {
/// Known to this list alone, so that nothing else can be dropped here.
const QString kDragType = QStringLiteral("application/x-RKTrackInfoPriorityController");
constexpr QChar kSeparator = u'\n';
}  // namespace

void PriorityModel::reload() {
  beginResetModel();
  endResetModel();
}

int PriorityModel::rowCount(const QModelIndex &parent) const {
  return parent.isValid() ? 0 : int(controller.priorityArray().size());
}

QVariant PriorityModel::data(const QModelIndex &index, int role) const {
  if (!index.isValid() || role != Qt::DisplayRole) return {};
  const QString text = RKTrackInfoPriorityController::textOf(controller.priorityArray().value(index.row()));
  return QStringLiteral("%1.  %2").arg(index.row() + 1).arg(text);
}

Qt::ItemFlags PriorityModel::flags(const QModelIndex &index) const {
  if (!index.isValid()) return Qt::ItemIsDropEnabled;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
}

QStringList PriorityModel::mimeTypes() const {
  return {kDragType};
}

QMimeData *PriorityModel::mimeData(const QModelIndexList &indexes) const {
  QModelIndexList rows = indexes;
  std::sort(rows.begin(), rows.end());
  QStringList identifiers;
  for (const QModelIndex &index : rows) identifiers.append(controller.priorityArray().value(index.row()));
  auto *dragged = new QMimeData;
  dragged->setData(kDragType, identifiers.join(kSeparator).toUtf8());
  return dragged;
}

bool PriorityModel::dropMimeData(const QMimeData *dropped, Qt::DropAction action, int row, int,
                                 const QModelIndex &parent) {
  if (action != Qt::MoveAction || !dropped->hasFormat(kDragType)) return false;
  const QString identifiers = QString::fromUtf8(dropped->data(kDragType));
  const int target = parent.isValid() ? parent.row() : row < 0 ? rowCount() : row;
  return controller.acceptDrop(identifiers.split(kSeparator, Qt::SkipEmptyParts), target);
}
