#include "desktop/DesktopView.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QEventLoop>
#include <QFileDialog>
#include <QUrl>

#include "bridge/LocalizedMessage.h"
#include "desktop/ExplainSheet.h"
#include "desktop/LibraryPreferences.h"
#include "desktop/MarkPreferences.h"
#include "desktop/MergeSummarySheet.h"
#include "desktop/PreferencesWindow.h"
#include "desktop/ProblemWindow.h"
#include "desktop/ProgressPanel.h"
#include "platform/Platform.h"
#include "program/Application.h"
#include "support/BMLog.h"
#include "support/Preferences.h"
#include "ui/MarkedGroups.h"

DesktopView::DesktopView() = default;

DesktopView::~DesktopView() = default;

void DesktopView::attach(Application &attached) {
  application = &attached;
  window = std::make_unique<ProblemWindow>(attached.state(), attached.problemTables(), makeActions());
  preferences = std::make_unique<PreferencesWindow>(makeActions());
  progress = std::make_unique<ProgressPanel>(
      window.get(), [this] { application->controller().doCancelOperation("ProgressPanel"); });
  // The sheet blocks its window, and with it the window's own way to quit.
  auto *quit = new QAction(progress.get());
  quit->setShortcut(QKeySequence::Quit);
  progress->addAction(quit);
  QObject::connect(quit, &QAction::triggered, progress.get(),
                   [this] { application->controller().customTerminate(); });
  attached.controller().prefsController().setPriorityArray = [this](const QStringList &priorities) {
    preferences->marks().setPriorityArray(priorities);
  };
  attached.controller().problemWindowFrame = [this] { return window->placeText(); };
  attached.controller().prefsWindowOrigin = [this] { return preferences->originText(); };
}

void DesktopView::detach() {
  if (!application) return;
  application->state().endAllWork();
  endAllSheets();
  for (const QPointer<SheetDialog> &sheet : sheets) delete sheet.data();
  application->controller().problemWindowFrame = {};
  application->controller().prefsWindowOrigin = {};
  application->controller().prefsController().setPriorityArray = {};
  application = nullptr;
  progress.reset();
  preferences.reset();
  window.reset();
}

WindowActions DesktopView::makeActions() {
  WindowActions actions;
  actions.rescan = [this] { application->reloadLibraryAndScan(); };
  actions.chooseMediaFolder = [this] { application->controller().chooseNewMediaFolder(); };
  actions.useAutomaticMediaFolder = [this] {
    prefs::remove(prefs::manualMediaPath);
    application->reloadLibraryAndScan();
  };
  actions.revealPreferences = [this] { revealPreferences({}); };
  actions.resetToDefaults = [this] { application->controller().prefsController().resetToDefaults(true); };
  actions.showAbout = [this] { showAbout(); };
  actions.showLog = [] { QDesktopServices::openUrl(QUrl::fromLocalFile(logFilePath())); };
  // The preferences window can be used while a scan adds rows.
  const auto unlessBusy = [this](std::function<void()> run) {
    return [this, run = std::move(run)] { hasSheet() ? beep() : run(); };
  };
  actions.automark = unlessBusy([this] { application->automark().doAutomark(); });
  actions.unmark = unlessBusy([this] { application->automark().doUnmark(); });
  actions.notDuplicates = unlessBusy([this] { application->duplicateGroups().ignoreSelectedDuplicates(); });
  addMergeActions(actions);
  actions.updatePriorities = [this] { application->controller().prefsController().updatePriorities(); };
  actions.storePriorities = [this](const QStringList &priorities) {
    application->controller().prefsController().infoPriorityChanged(priorities);
  };
  actions.quit = [this] { application->customTerminate(); };
  actions.focusChanged = [this] {
    if (application) application->controller().applicationDidChangeFocus();
  };
  return actions;
}

void DesktopView::addMergeActions(WindowActions &actions) {
  actions.merge = [this] {
    if (hasSheet()) return beep();
    window->hideMergeNote();
    application->mergeMarkedDuplicates();
  };
  actions.changedUnkeptPolicy = [this] { application->mergeEngine().changedMergeDupeUnkeptAction(); };
  actions.chooseUnkeptFolder = [this] {
    if (hasSheet()) return beep();
    const QString folder = chooseFolder(localizedMessage(QStringLiteral("ChooseUnkeptDirMessage")),
                                        prefs::text(prefs::unkeptPath));
    if (!folder.isEmpty()) application->mergeEngine().chooseUnkeptPanelDidEnd(folder);
    window->validate();
  };
}

void DesktopView::showAbout() {
  const BundleInformation &bundle = platform().bundle;
  Alert alert;
  alert.key = QStringLiteral("AboutTitle");
  alert.title = localizedMessage(alert.key, bundle.shortVersion);
  alert.message = localizedMessage(QStringLiteral("AboutMessage"), bundle.commit, logFilePath());
  alert.buttons = {localizedMessage(QStringLiteral("AboutOK"))};
  beginSheet(alert, {});
}

QWidget *DesktopView::hostOfSheet(bool onPreferencesWindow) const {
  for (auto sheet = sheets.rbegin(); sheet != sheets.rend(); ++sheet) {
    if (*sheet && (*sheet)->isVisible()) return *sheet;
  }
  if (onPreferencesWindow && preferences->isVisible()) return preferences.get();
  if (progress->isVisible()) return progress.get();
  return window.get();
}

SheetDialog *DesktopView::makeSheet(const Alert &alert) {
  auto *sheet = new SheetDialog(hostOfSheet(alert.onPreferencesWindow));
  sheet->setObjectName(alert.key);
  sheet->setPicture(alert.critical ? icons::icon(icons::Shape::Warning) : icons::application());
  sheet->setTitle(alert.title);
  sheet->setText(alert.message);
  for (int i = 0; i < alert.buttons.size(); ++i) sheet->addButton(alert.buttons[i], i);
  const int last = int(alert.buttons.size()) - 1;
  sheet->setEscapeIndex(alert.safeButton >= 0 ? alert.safeButton : qMin(last, 1));
  if (!alert.suppression.isEmpty()) sheet->addSuppression(alert.suppression, alert.suppressionPreference);
  keep(sheet);
  return sheet;
}

void DesktopView::keep(SheetDialog *sheet) {
  std::erase_if(sheets, [](const QPointer<SheetDialog> &one) { return one.isNull(); });
  sheets.emplace_back(sheet);
  QObject::connect(sheet, &QDialog::finished, sheet, &QObject::deleteLater);
  // A sheet keeps commands from being used.
  QObject::connect(sheet, &QDialog::finished, window.get(), [this] { window->validate(); });
}

int DesktopView::runAlert(const Alert &alert) {
  QPointer<SheetDialog> sheet = makeSheet(alert);
  int answer = alert.safeButton >= 0 ? alert.safeButton : alert.buttons.size() > 1 ? 1 : 0;
  QEventLoop loop;
  sheet->onChosen = [&answer](int index) { answer = index; };
  QObject::connect(sheet, &QDialog::finished, &loop, &QEventLoop::quit);
  begin(sheet);
  loop.exec();
  if (sheet && sheet->isVisible()) sheet->dismiss();
  return answer;
}

void DesktopView::beginSheet(const Alert &alert, std::function<void(int)> done) {
  SheetDialog *sheet = makeSheet(alert);
  sheet->onChosen = std::move(done);
  begin(sheet);
}

void DesktopView::beginExplainDuplicatesSheet() {
  auto *sheet = new ExplainSheet(hostOfSheet(false), [this] { revealPreferences(QStringLiteral("dupe")); });
  keep(sheet);
  begin(sheet);
}

void DesktopView::begin(SheetDialog *sheet) {
  sheet->begin();
  window->validate();
}

bool DesktopView::hasSheet() const {
  if (progress && progress->isVisible()) return true;
  return std::any_of(sheets.begin(), sheets.end(), [this](const QPointer<SheetDialog> &sheet) {
    return sheet && sheet->isVisible() && sheet->parentWidget() != preferences.get();
  });
}

void DesktopView::endAllSheets() {
  const std::vector<QPointer<SheetDialog>> open = sheets;
  for (auto sheet = open.rbegin(); sheet != open.rend(); ++sheet) {
    if (*sheet && (*sheet)->isVisible()) (*sheet)->dismiss();
  }
  if (progress) progress->hide();
  if (window) window->validate();
}

void DesktopView::beep() {
  QApplication::beep();
}

void DesktopView::beginProgressSheet() {
  progress->begin();
  window->validate();
}
void DesktopView::endProgressSheet() {
  progress->hide();
  progress->setLow(false);
  window->validate();
}
void DesktopView::setProgressText(const QString &text) {
  progress->setOneLineTitle(text);
}
void DesktopView::setProgressQuote(const QString &text) {
  progress->setQuote(text);
}
void DesktopView::setProgressSubText(const QString &text) {
  progress->setSubText(text);
}
void DesktopView::setProgressIndeterminate(bool indeterminate) {
  progress->setIndeterminate(indeterminate);
}
void DesktopView::setProgressMaximum(double maximum) {
  progress->setMaximum(maximum);
}
void DesktopView::setProgressValue(double value) {
  progress->setValue(value);
}
void DesktopView::setCancelEnabled(bool enabled) {
  progress->setCancelEnabled(enabled);
}

void DesktopView::reloadTable(ProblemTab tab) {
  window->reloadTable(tab);
  if (tab == ProblemTab::Duplicates) followMerge();
}
void DesktopView::reloadRows(ProblemTab tab, qsizetype first, qsizetype end) {
  window->reloadRows(tab, first, end);
}
qsizetype DesktopView::selectedRowCount(ProblemTab tab) const {
  return window ? qsizetype(window->page(tab).table().selection().size()) : 0;
}
void DesktopView::rememberSelection() {
  window->rememberSelection();
}
void DesktopView::restoreSelection() {
  window->restoreSelection();
  followMerge();
}
std::vector<Dictionary> DesktopView::selectedRows(ProblemTab tab) const {
  return window->page(tab).table().selection();
}
void DesktopView::selectRows(ProblemTab tab, const std::vector<Dictionary> &rows) {
  window->page(tab).table().select(rows);
}
ProblemTab DesktopView::currentTab() const {
  return window->currentTab();
}
void DesktopView::selectTab(ProblemTab tab) {
  window->selectTab(tab);
}
void DesktopView::setTabLabel(ProblemTab tab, const QString &label) {
  window->setTabLabel(tab, label);
}
void DesktopView::validateProblemUI() {
  window->validate();
}

void DesktopView::showProblemWindow() {
  window->show();
  window->raise();
  window->activateWindow();
}

void DesktopView::setPhoneticWarningVisible(bool visible) {
  window->setPhoneticWarningVisible(visible);
}

void DesktopView::setUnresponsiveWarningVisible(bool visible) {
  if (progress) progress->setWarningVisible(visible);
}

void DesktopView::revealPreferences(const QString &tabIdentifier) {
  preferences->reveal(tabIdentifier, window.get());
}

void DesktopView::setLibraryPaths(const QString &libraryFolder, const QString &mediaFolder) {
  preferences->library().setPaths(libraryFolder, mediaFolder);
}

void DesktopView::setLibrarySongCount(const QString &text) {
  preferences->library().setSongCount(text);
}

void DesktopView::setSettingsNoteVisible(int group, bool visible) {
  preferences->setSettingsNoteVisible(group, visible);
}

void DesktopView::scrollToTop(ProblemTab tab, qsizetype row) {
  window->scrollToTop(tab, row);
  progress->setLow(window->heightAbove(tab, row) < window->height() / 2);
  isFollowing = true;
}

void DesktopView::followMerge() {
  if (!isFollowing) return;
  const Array &rows = std::as_const(application->state().lists).mDuplicateSongDicts;
  std::optional<qsizetype> first;
  {
    std::lock_guard held(*application->state().threadLockForObject(rows));
    first = MarkedGroups::firstOf(rows);
  }
  if (first) scrollToTop(ProblemTab::Duplicates, *first);
}

QString DesktopView::chooseFolder(const QString &message, const QString &startPath) {
  QWidget *host = preferences->isActiveWindow() ? static_cast<QWidget *>(preferences.get()) : window.get();
  QFileDialog dialog(host, message, startPath);
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  dialog.setLabelText(QFileDialog::Accept, localizedMessage(QStringLiteral("ChooseUnkeptDirPrompt")));
  return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void DesktopView::scanDidEnd() {
  isFollowing = false;
  window->validate();
}

void DesktopView::libraryDidLoad(qsizetype) {
  isFollowing = false;
  window->hideMergeNote();
  window->validate();
}

void DesktopView::mergeDidEnd() {
  isFollowing = false;
  const MergeSummary summary(application->state().merge.report.contents());
  if (!summary.isEmpty()) window->showMergeNote(summary.headline(), [this] { showMergeDetails(); });
  window->validate();
}

void DesktopView::showMergeDetails() {
  if (hasSheet()) return beep();
  auto *sheet =
      new MergeSummarySheet(window.get(), MergeSummary(application->state().merge.report.contents()));
  keep(sheet);
  begin(sheet);
}
