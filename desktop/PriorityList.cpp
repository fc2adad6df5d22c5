#include "desktop/PriorityList.h"

#include <QHBoxLayout>
#include <QListView>
#include <QShortcut>
#include <QToolButton>

#include "bridge/LocalizedMessage.h"
#include "desktop/RowDelegate.h"
#include "desktop/ToolTips.h"

namespace {
constexpr int kRows = 8;
}

PriorityList::PriorityList()
    : list(new QListView),
      up(moveButton(Qt::UpArrow, -1, QStringLiteral("Prefs-PriorityUp"))),
      down(moveButton(Qt::DownArrow, 1, QStringLiteral("Prefs-PriorityDown"))) {
  list->setObjectName(QStringLiteral("preferInfoTypes"));
  list->setAccessibleName(localizedMessage(QStringLiteral("Prefs-InfoPriorities")));
  list->setToolTip(toolTips::fromPlainText(localizedMessage(QStringLiteral("Prefs-InfoPrioritiesToolTip"))));
  list->setModel(&model);
  list->setItemDelegate(new RowDelegate(-1, list));
  list->setUniformItemSizes(true);
  list->setDragEnabled(true);
  list->setAcceptDrops(true);
  list->setDropIndicatorShown(true);
  list->setDragDropMode(QAbstractItemView::InternalMove);
  list->setDefaultDropAction(Qt::MoveAction);
  list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setFixedHeight(kRows * (list->fontMetrics().height() + 8) + 2 * list->frameWidth());
  auto *buttons = new QVBoxLayout;
  buttons->setSpacing(4);
  buttons->addWidget(up);
  buttons->addWidget(down);
  buttons->addStretch();
  auto *row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(list, 1);
  row->addLayout(buttons);
  for (const auto &[key, by] : {std::pair(Qt::Key_Up, -1), std::pair(Qt::Key_Down, 1)}) {
    auto *shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), list, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, by = by] { moveSelected(by); });
  }
  connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { updateButtons(); });
  order.onReloaded = [this] { reload(); };
  updateButtons();
}

PriorityList::~PriorityList() {
  order.onReloaded = {};
  // The list would ask the model after it is gone.
  list->setModel(nullptr);
}

QToolButton *PriorityList::moveButton(Qt::ArrowType arrow, int by, const QString &textKey) {
  auto *button = new QToolButton;
  const QString text = localizedMessage(textKey);
  button->setObjectName(textKey);
  button->setArrowType(arrow);
  button->setToolTip(text);
  button->setAccessibleName(text);
  button->setFocusPolicy(Qt::StrongFocus);
  connect(button, &QToolButton::clicked, this, [this, by] { moveSelected(by); });
  return button;
}

void PriorityList::moveSelected(int by) {
  const QModelIndexList selected = list->selectionModel()->selectedIndexes();
  if (selected.size() == 1) order.move(selected.front().row(), selected.front().row() + by);
}

void PriorityList::reload() {
  // The selected line is told by what it says, which a reload leaves as it is but for its number.
  const QModelIndex before = list->currentIndex();
  const QString chosen = before.isValid() ? shown.value(before.row()) : QString();
  shown = order.priorityArray();
  model.reload();
  const qsizetype now = chosen.isEmpty() ? -1 : shown.indexOf(chosen);
  if (now >= 0) list->setCurrentIndex(model.index(int(now)));
  updateButtons();
}

void PriorityList::updateButtons() {
  const QModelIndexList selected = list->selectionModel()->selectedIndexes();
  const int row = selected.isEmpty() ? -1 : selected.front().row();
  up->setEnabled(row > 0);
  down->setEnabled(row >= 0 && row + 1 < model.rowCount());
}
