#pragma once

#include <QAbstractListModel>

#include "ui/RKTrackInfoPriorityController.h"

/// The order of the criteria as a list whose rows can be dragged. Drops go to the controller; nothing is
/// removed by a drag.
class PriorityModel : public QAbstractListModel {
 public:
  /// The controller outlives the model.
  explicit PriorityModel(RKTrackInfoPriorityController &controlled) : controller(controlled) {}

  /// The controller's list has changed.
  void reload();

  int rowCount(const QModelIndex &parent = {}) const override;
  QVariant data(const QModelIndex &index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex &index) const override;
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
  QStringList mimeTypes() const override;
  QMimeData *mimeData(const QModelIndexList &indexes) const override;
  /// A drop on a row is one above it.
  bool dropMimeData(const QMimeData *dropped, Qt::DropAction action, int row, int column,
                    const QModelIndex &parent) override;

 private:
  RKTrackInfoPriorityController &controller;
};
