#pragma once

#include <QPointer>
#include <memory>

#include "app/state/ProblemView.h"
#include "desktop/WindowActions.h"

class Application;
class PreferencesWindow;
class ProblemWindow;
class ProgressPanel;
class SheetDialog;

/// The application's windows. Made before the application and outlives it; shows nothing until `attach`. Main
/// thread.
class DesktopView : public ProblemView {
 public:
  DesktopView();
  ~DesktopView() override;

  /// Makes the windows of the application. Once.
  void attach(Application &attached);
  /// Cancels what runs, waits for it, and takes the windows away. Before the application is destroyed.
  void detach();

  ProblemWindow *problemWindow() { return window.get(); }
  PreferencesWindow *preferencesWindow() { return preferences.get(); }

  int runAlert(const Alert &alert) override;
  /// A sheet that is ended by `endAllSheets` gives no answer.
  void beginSheet(const Alert &alert, std::function<void(int)> done) override;
  void beginExplainDuplicatesSheet() override;
  bool hasSheet() const override;
  void endAllSheets() override;
  void beep() override;

  void beginProgressSheet() override;
  void endProgressSheet() override;
  void setProgressText(const QString &text) override;
  void setProgressQuote(const QString &text) override;
  void setProgressSubText(const QString &text) override;
  void setProgressIndeterminate(bool indeterminate) override;
  void setProgressMaximum(double maximum) override;
  void setProgressValue(double value) override;
  void setCancelEnabled(bool enabled) override;

  void reloadTable(ProblemTab tab) override;
  void reloadRows(ProblemTab tab, qsizetype first, qsizetype end) override;
  void rememberSelection() override;
  void restoreSelection() override;
  std::vector<Dictionary> selectedRows(ProblemTab tab) const override;
  qsizetype selectedRowCount(ProblemTab tab) const override;
  void selectRows(ProblemTab tab, const std::vector<Dictionary> &rows) override;
  ProblemTab currentTab() const override;
  void selectTab(ProblemTab tab) override;
  void setTabLabel(ProblemTab tab, const QString &label) override;
  void validateProblemUI() override;
  void showProblemWindow() override;
  void setPhoneticWarningVisible(bool visible) override;
  void setUnresponsiveWarningVisible(bool visible) override;

  void revealPreferences(const QString &tabIdentifier) override;
  void setLibraryPaths(const QString &libraryFolder, const QString &mediaFolder) override;
  void setLibrarySongCount(const QString &text) override;
  void setSettingsNoteVisible(int group, bool visible) override;
  void scrollToTop(ProblemTab tab, qsizetype row) override;
  QString chooseFolder(const QString &message, const QString &startPath) override;
  void libraryDidLoad(qsizetype tracks) override;
  void mergeDidEnd() override;
  void scanDidEnd() override;

 private:
  WindowActions makeActions();
  void addMergeActions(WindowActions &actions);
  /// While a merge runs, the group that is worked on stays the topmost one.
  void followMerge();
  void showMergeDetails();
  void showAbout();
  /// The sheet for an alert, not begun yet; it deletes itself when it has ended.
  SheetDialog *makeSheet(const Alert &alert);
  /// Shows a sheet, which keeps commands from being used.
  void begin(SheetDialog *sheet);
  /// Notes the sheet until it is gone.
  void keep(SheetDialog *sheet);
  /// What a new sheet hangs from: the topmost sheet, or the window.
  QWidget *hostOfSheet(bool onPreferencesWindow) const;

  Application *application = nullptr;
  std::unique_ptr<ProblemWindow> window;
  std::unique_ptr<PreferencesWindow> preferences;
  std::unique_ptr<ProgressPanel> progress;
  std::vector<QPointer<SheetDialog>> sheets;
  /// The table was scrolled for a merge that has not ended; a load or a scan ends it too, as then the merge's
  /// own end may never be told.
  bool isFollowing = false;
};
