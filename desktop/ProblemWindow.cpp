#include "desktop/ProblemWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "bridge/LocalizedMessage.h"
#include "desktop/CommandBar.h"
#include "desktop/DuplicateCommands.h"
#include "desktop/DuplicateTable.h"
#include "desktop/FrameText.h"
#include "desktop/MergeBar.h"
#include "desktop/NameCommands.h"
#include "desktop/NameTable.h"
#include "desktop/NoteStrip.h"
#include "desktop/ProblemToolbar.h"
#include "support/Preferences.h"

namespace {

constexpr QSize kFirstSize(1100, 680);
constexpr QSize kLeastSize(720, 440);

QString menuText(const QString &key) {
  return tableText(key, QStringLiteral("MainMenu"));
}

}  // namespace

ProblemWindow::ProblemWindow(AppState &appState, ProblemTables &problemTables, WindowActions windowActions)
    : state(appState),
      tables(problemTables),
      actions(std::move(windowActions)),
      toolbar(new ProblemToolbar(actions)),
      phoneticWarning(new NoteStrip(localizedMessage(QStringLiteral("PhoneticWarning")))),
      mergeNote(new NoteStrip({})),
      stack(new QStackedWidget),
      bar(new CommandBar) {
  setWindowTitle(QStringLiteral("Tallyfen"));
  setMinimumSize(kLeastSize);
  auto *central = new QWidget;
  auto *column = new QVBoxLayout(central);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(toolbar);
  column->addWidget(phoneticWarning);
  column->addWidget(mergeNote);
  column->addWidget(stack, 1);
  column->addWidget(bar);
  phoneticWarning->hide();
  setUpPages();
  setUpMerge(*column);
  setCentralWidget(central);
  toolbar->onTabClicked = [this](ProblemTab tab) { selectTab(tab); };
  setUpMenus();
  restorePlace();
  validate();
}

ProblemWindow::~ProblemWindow() = default;

void ProblemWindow::setUpPages() {
  auto *duplicates = new DuplicateTable(state, tables);
  auto *names = new NameTable(state, tables);
  duplicateCommands = std::make_unique<DuplicateCommands>(*duplicates, actions);
  nameCommands = std::make_unique<NameCommands>(*names, tables);
  for (const ProblemTab tab : kProblemTabs) {
    ProblemTable *table = tab == ProblemTab::Duplicates ? static_cast<ProblemTable *>(duplicates)
                          : tab == ProblemTab::Names    ? names
                                                        : new ProblemTable(state, tables, tab);
    pages[int(tab)] = new ProblemPage(state, actions, tab, table);
    stack->addWidget(pages[int(tab)]);
    table->onSelectionChanged = [this] { validate(true); };
    table->onContextMenu = [this](QMenu &menu, int) { finishContextMenu(menu); };
  }
  duplicates->onContextMenu = [this](QMenu &menu, int row) {
    duplicateCommands->fillContextMenu(menu, row);
    finishContextMenu(menu);
  };
  names->onContextMenu = [this](QMenu &menu, int row) {
    nameCommands->fillContextMenu(menu, row);
    finishContextMenu(menu);
  };
  for (QAction *action : duplicateCommands->buttonActions()) bar->addButton(action);
}

void ProblemWindow::setUpMerge(QVBoxLayout &column) {
  mergeBar = new MergeBar(actions, duplicateCommands->mergeAction());
  column.addWidget(mergeBar);
  mergeNote->setObjectName(QStringLiteral("mergeNote"));
  mergeNote->hide();
  const auto button = [this](const char *key, std::function<void()> pressed) {
    mergeNote->addButton(localizedMessage(QLatin1String(key)), std::move(pressed))
        ->setObjectName(QLatin1String(key));
  };
  button("MergeSummary-Details", [this] {
    if (showMergeDetails) showMergeDetails();
  });
  button("MergeSummary-Dismiss", [this] { hideMergeNote(); });
}

void ProblemWindow::finishContextMenu(QMenu &menu) const {
  menu.addSeparator();
  menu.addAction(copyAction);
}

void ProblemWindow::setUpMenus() {
  setUpFileMenu();
  setUpEditMenu();
  setUpViewMenu();
  duplicateCommands->fillMenu(*menuBar()->addMenu(menuText(QStringLiteral("&Duplicates"))));
  nameCommands->fillMenu(*menuBar()->addMenu(menuText(QStringLiteral("&Names"))));
  QMenu *help = menuBar()->addMenu(menuText(QStringLiteral("&Help")));
  addAction(help, menuText(QStringLiteral("Show Log")), {}, actions.showLog);
  addAction(help, menuText(QStringLiteral("About Tallyfen")), {}, actions.showAbout);
}

void ProblemWindow::setUpFileMenu() {
  QMenu *file = menuBar()->addMenu(menuText(QStringLiteral("&File")));
  rescanAction = addAction(file, {}, QKeySequence(Qt::CTRL | Qt::Key_R), actions.rescan);
  addAction(file, menuText(QStringLiteral("Choose Media Folder…")), {}, actions.chooseMediaFolder);
  file->addSeparator();
  addAction(file, menuText(QStringLiteral("Preferences…")), QKeySequence(Qt::CTRL | Qt::Key_Comma),
            actions.revealPreferences);
  file->addSeparator();
  addAction(file, menuText(QStringLiteral("Quit Tallyfen")), QKeySequence(Qt::CTRL | Qt::Key_Q),
            actions.quit);
}

void ProblemWindow::setUpEditMenu() {
  QMenu *edit = menuBar()->addMenu(menuText(QStringLiteral("&Edit")));
  copyAction = addAction(edit, menuText(QStringLiteral("Copy Rows")), QKeySequence::Copy, [this] {
    QApplication::clipboard()->setText(page(currentTab()).table().selectedText());
  });
  selectAllAction = addAction(edit, menuText(QStringLiteral("Select All")), QKeySequence::SelectAll,
                              [this] { page(currentTab()).table().selectAll(); });
}

void ProblemWindow::setUpViewMenu() {
  QMenu *view = menuBar()->addMenu(menuText(QStringLiteral("&View")));
  for (const ProblemTab tab : kProblemTabs) {
    const QString title = localizedMessage(QStringLiteral("TabTitle-") + identifierOfTab(tab));
    QAction *action =
        addAction(view, title, QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + int(tab))), [this, tab] {
          selectTab(tab);
          raise();
        });
    action->setCheckable(true);
    tabActions[int(tab)] = action;
  }
}

QAction *ProblemWindow::addAction(QMenu *menu, const QString &text, const QKeySequence &shortcut,
                                  std::function<void()> run) {
  QAction *action = menu->addAction(text);
  action->setShortcut(shortcut);
  connect(action, &QAction::triggered, this, std::move(run));
  return action;
}

ProblemTab ProblemWindow::currentTab() const {
  return ProblemTab(stack->currentIndex());
}

void ProblemWindow::selectTab(ProblemTab tab) {
  stack->setCurrentIndex(int(tab));
  toolbar->setCurrentTab(tab);
  page(tab).table().setFocus();
  validate();
}

void ProblemWindow::setTabLabel(ProblemTab tab, const QString &label) {
  toolbar->setTabLabel(tab, label);
}

void ProblemWindow::reloadTable(ProblemTab tab) {
  page(tab).reload();
  if (tab == currentTab()) updateStatus();
}

void ProblemWindow::rememberSelection() {
  mRememberedSelectedItems = page(currentTab()).table().selection();
}

void ProblemWindow::restoreSelection() {
  page(currentTab()).table().select(mRememberedSelectedItems);
  validate();
}

void ProblemWindow::reloadRows(ProblemTab tab, qsizetype first, qsizetype end) {
  page(tab).table().reloadRows(int(first), int(end));
}

void ProblemWindow::updateRescanLabel() {
  const QString which =
      state.mHaveScannedLibraryForProblems ? QStringLiteral("rescanLibrary") : QStringLiteral("scanLibrary");
  const QString key = QStringLiteral("ToolbarLabel-") + which;
  const QString label = localizedMessage(key);
  if (label == key) return;
  toolbar->setRescanLabel(label, localizedMessage(QStringLiteral("ToolbarToolTip-") + which));
  rescanAction->setText(label);
}

void ProblemWindow::validate(bool marksAreUnchanged) {
  updateRescanLabel();
  const bool viewMenuIsValid = state.mHaveScannedLibraryForProblems && !state.mMusicLibraryBusy;
  for (const ProblemTab tab : kProblemTabs) {
    tabActions[int(tab)]->setEnabled(viewMenuIsValid);
    tabActions[int(tab)]->setChecked(tab == currentTab());
    page(tab).updateEmptyPage();
  }
  const ProblemTable &table = page(currentTab()).table();
  copyAction->setEnabled(!table.selection().empty());
  const bool hasRows = table.model()->rowCount() > 0;
  selectAllAction->setEnabled(hasRows);
  const bool showsDuplicates = currentTab() == ProblemTab::Duplicates;
  duplicateCommands->update(tables.validateProblemUI(marksAreUnchanged), showsDuplicates);
  nameCommands->update(currentTab() == ProblemTab::Names);
  bar->setButtonsVisible(showsDuplicates && hasRows);
  mergeBar->setVisible(showsDuplicates && hasRows);
  mergeBar->refresh();
  phoneticWarning->setVisible(phoneticWarningWanted && currentTab() == ProblemTab::Names);
  updateStatus();
}

void ProblemWindow::setPhoneticWarningVisible(bool visible) {
  phoneticWarningWanted = visible;
  validate();
}

void ProblemWindow::scrollToTop(ProblemTab tab, qsizetype row) {
  page(tab).table().scrollToTop(int(row));
}

int ProblemWindow::heightAbove(ProblemTab tab, qsizetype row) {
  ProblemTable &table = page(tab).table();
  const QRect place = table.visualRect(table.model()->index(int(row), 0));
  return table.viewport()->mapTo(this, place.topLeft()).y();
}

void ProblemWindow::showMergeNote(const QString &headline, std::function<void()> showDetails) {
  mergeNote->setText(headline);
  showMergeDetails = std::move(showDetails);
  mergeNote->show();
}

void ProblemWindow::hideMergeNote() {
  mergeNote->hide();
  showMergeDetails = {};
}

void ProblemWindow::updateStatus() {
  bar->setText(page(currentTab()).summary());
  bar->setVisible(page(currentTab()).table().model()->rowCount() > 0);
}

QString ProblemWindow::placeText() const {
  return frameText::fromRectangle(isMaximized() || isFullScreen() ? normalGeometry() : geometry());
}

void ProblemWindow::restorePlace() {
  const std::optional<QRect> saved = frameText::toRectangle(prefs::text(prefs::problemWinFrame));
  QRect frame(QPoint(), kFirstSize);
  if (saved) {
    frame = *saved;
  } else {
    frame.moveCenter(frameText::screenFor({}).center());
  }
  setGeometry(frameText::broughtBack(frame, frameText::screenFor(frame)));
}

int ProblemWindow::sheetTop() const {
  return toolbar->mapTo(this, QPoint(0, toolbar->height())).y();
}

int ProblemWindow::sheetBottom() const {
  return stack->mapTo(this, QPoint(0, stack->height())).y();
}

void ProblemWindow::closeEvent(QCloseEvent *event) {
  event->accept();
  actions.quit();
}

void ProblemWindow::changeEvent(QEvent *event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && actions.focusChanged && isVisible())
    actions.focusChanged();
}
