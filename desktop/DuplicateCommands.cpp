#include "desktop/DuplicateCommands.h"

#include <QMenu>

#include "bridge/LocalizedMessage.h"
#include "desktop/DuplicateTable.h"
#include "values/Keys.h"

namespace {

QString text(const QString &name) {
  return localizedMessage(QStringLiteral("Command-") + name);
}

}  // namespace

DuplicateCommands::DuplicateCommands(DuplicateTable &duplicateTable, const WindowActions &actions)
    : table(duplicateTable),
      automark(add(QStringLiteral("Automark"), QKeySequence(Qt::CTRL | Qt::Key_M), actions.automark)),
      unmark(add(QStringLiteral("Unmark"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_M), actions.unmark)),
      markInformation(addMark(QStringLiteral("MarkInformation"), Qt::Key_I, {keys::markInfo})),
      markAudio(addMark(QStringLiteral("MarkAudio"), Qt::Key_A, {keys::markAudio})),
      markBoth(addMark(QStringLiteral("MarkBoth"), Qt::Key_Space, {keys::markInfo, keys::markAudio})),
      notDuplicates(
          add(QStringLiteral("NotDuplicates"), QKeySequence(Qt::CTRL | Qt::Key_D), actions.notDuplicates)),
      merge(add(QStringLiteral("Merge"), QKeySequence(Qt::CTRL | Qt::Key_Return), actions.merge)) {
  for (QAction *action : {automark, unmark, notDuplicates, merge}) {
    action->setToolTip(text(action->objectName() + QStringLiteral("ToolTip")));
  }
}

QAction *DuplicateCommands::add(const QString &name, const QKeySequence &shortcut,
                                std::function<void()> run) {
  auto *action = new QAction(text(name), &table);
  action->setObjectName(name);
  action->setShortcut(shortcut);
  QObject::connect(action, &QAction::triggered, &table, std::move(run));
  return action;
}

QAction *DuplicateCommands::addMark(const QString &name, int key, const std::vector<Key> &marks) {
  QAction *action = add(name, QKeySequence(key), [this, marks] { table.toggleMarks(marks); });
  action->setShortcutContext(Qt::WidgetShortcut);
  table.addAction(action);
  return action;
}

void DuplicateCommands::fillMenu(QMenu &menu) const {
  menu.addActions({automark, unmark});
  menu.addSeparator();
  menu.addActions({markInformation, markAudio, markBoth});
  menu.addSeparator();
  menu.addAction(notDuplicates);
  menu.addSeparator();
  menu.addAction(merge);
}

void DuplicateCommands::fillContextMenu(QMenu &menu, int row) const {
  const std::vector<qsizetype> chosen = table.selectedOrCurrent();
  const bool isOneOfSeveral = chosen.size() > 1 && std::binary_search(chosen.begin(), chosen.end(), row);
  menu.addActions({markInformation, markAudio, markBoth});
  menu.addSeparator();
  if (isOneOfSeveral) menu.addActions({automark, unmark});
  menu.addAction(notDuplicates);
}

void DuplicateCommands::update(const ProblemUIStates &states, bool isShown) {
  const bool severalSelected = table.selection().size() > 1;
  automark->setText(text(severalSelected ? QStringLiteral("AutomarkSelected") : QStringLiteral("Automark")));
  unmark->setText(text(severalSelected ? QStringLiteral("UnmarkSelected") : QStringLiteral("Unmark")));
  automark->setEnabled(isShown && states.automark);
  unmark->setEnabled(isShown && states.unmark);
  notDuplicates->setEnabled(isShown && states.ignore);
  merge->setEnabled(isShown && states.merge);
  const bool hasRow = isShown && states.automark && table.currentIndex().isValid();
  for (QAction *action : {markInformation, markAudio, markBoth}) action->setEnabled(hasRow);
}
