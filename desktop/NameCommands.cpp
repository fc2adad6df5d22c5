#include "desktop/NameCommands.h"

#include <QActionGroup>

#include "bridge/LocalizedMessage.h"
#include "desktop/NameTable.h"
#include "desktop/SpellingTexts.h"

namespace {

QString text(const char *key) {
  return localizedMessage(QLatin1String(key));
}

}  // namespace

NameCommands::NameCommands(NameTable &nameTable, ProblemTables &problemTables)
    : table(nameTable), tables(problemTables), next(new QAction(text("Command-NextSpelling"), &nameTable)) {
  next->setObjectName(QStringLiteral("NextSpelling"));
  next->setShortcut(QKeySequence(Qt::Key_Space));
  next->setShortcutContext(Qt::WidgetShortcut);
  table.addAction(next);
  QObject::connect(next, &QAction::triggered, &table, [this] { table.preferNextSpelling(); });
}

void NameCommands::fillMenu(QMenu &menu) {
  spellings = menu.addMenu(text("Command-PreferredSpelling"));
  spellings->setObjectName(QStringLiteral("PreferredSpelling"));
  QObject::connect(spellings, &QMenu::aboutToShow, spellings, [this] {
    spellings->clear();
    fillSpellings(*spellings, table.currentIndex().row());
  });
  menu.addAction(next);
}

void NameCommands::fillContextMenu(QMenu &menu, int row) const {
  fillSpellings(*menu.addMenu(text("Command-PreferredSpelling")), row);
  if (row == table.currentIndex().row()) menu.addAction(next);
}

void NameCommands::fillSpellings(QMenu &menu, int row) const {
  auto *group = new QActionGroup(&menu);
  for (const SpellingChoice &choice : tables.spellingsOfRow(row)) {
    QAction *action = menu.addAction(spellingLine(choice).replace(u'&', QStringLiteral("&&")));
    action->setCheckable(true);
    action->setChecked(choice.isPreferred);
    group->addAction(action);
    // The list may have changed by the time a line is chosen.
    QObject::connect(action, &QAction::triggered, &table, [this, row, choice] {
      for (const SpellingChoice &now : tables.spellingsOfRow(row)) {
        if (now.name == choice.name) tables.choosePreferredSong(row, now.songIndex);
      }
    });
  }
}

void NameCommands::update(bool isShown) {
  const bool hasRow = isShown && table.currentIndex().isValid();
  if (spellings) spellings->menuAction()->setEnabled(hasRow);
  next->setEnabled(hasRow);
}
