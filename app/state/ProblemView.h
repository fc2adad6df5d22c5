#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "values/Value.h"

/// The four kinds of problem, in the order of their tabs.
enum class ProblemTab { Duplicates, Names, Orphans, Missing };
inline constexpr int kProblemTabCount = 4;
inline constexpr ProblemTab kProblemTabs[] = {ProblemTab::Duplicates, ProblemTab::Names, ProblemTab::Orphans,
                                              ProblemTab::Missing};

/// A message for the user with its buttons, all texts as shown.
struct Alert {
  /// The string-table key of the title, by which a program without windows knows which alert this is.
  QString key;
  QString title;
  QString message;
  /// From the default button on; never empty.
  QStringList buttons;
  bool critical = false;
  /// Belongs to the preferences window instead of the problem window.
  bool onPreferencesWindow = false;
  /// The words of a box that the user can tick so as not to be asked again, and the preference that it sets
  /// or removes; both empty for none.
  QString suppression{};
  QString suppressionPreference{};
  /// The index of the button that changes nothing, which the escape key presses and which a program without
  /// windows answers; -1 for the usual one, the last.
  int safeButton = -1;
};

/// What the controller asks of the windows. Main thread only.
class ProblemView {
 public:
  virtual ~ProblemView() = default;

  /// Shows the alert and answers the index of the button pressed. Runs the event loop meanwhile.
  virtual int runAlert(const Alert &alert) = 0;
  /// Shows the alert as a sheet on the problem window; `done` gets the index of the button later.
  virtual void beginSheet(const Alert &alert, std::function<void(int)> done) = 0;
  /// Shows the sheet that explains what duplicates are and what the marks mean.
  virtual void beginExplainDuplicatesSheet() = 0;
  /// True while the problem window has a sheet attached, the progress sheet included.
  virtual bool hasSheet() const = 0;
  /// Ends every sheet attached to any window.
  virtual void endAllSheets() = 0;
  virtual void beep() = 0;

  /// The progress sheet: begun on the problem window, ended and ordered out.
  virtual void beginProgressSheet() = 0;
  virtual void endProgressSheet() = 0;
  virtual void setProgressText(const QString &text) = 0;
  virtual void setProgressQuote(const QString &text) = 0;
  virtual void setProgressSubText(const QString &text) = 0;
  virtual void setProgressIndeterminate(bool indeterminate) = 0;
  virtual void setProgressMaximum(double maximum) = 0;
  virtual void setProgressValue(double value) = 0;
  virtual void setCancelEnabled(bool enabled) = 0;

  /// The tables. Reloading reads the list anew; remembering and restoring go by row identity.
  virtual void reloadTable(ProblemTab tab) = 0;
  /// The same when only rows from `first` to before `end` show something new.
  virtual void reloadRows(ProblemTab tab, qsizetype /*first*/, qsizetype /*end*/) { reloadTable(tab); }
  virtual void rememberSelection() = 0;
  virtual void restoreSelection() = 0;
  /// The selected rows of a table by reference, top first.
  virtual std::vector<Dictionary> selectedRows(ProblemTab tab) const = 0;
  virtual qsizetype selectedRowCount(ProblemTab tab) const { return qsizetype(selectedRows(tab).size()); }
  /// Selects those of the rows that are in the table's list, by identity, and no others.
  virtual void selectRows(ProblemTab tab, const std::vector<Dictionary> &rows) = 0;
  virtual ProblemTab currentTab() const = 0;
  virtual void selectTab(ProblemTab tab) = 0;
  virtual void setTabLabel(ProblemTab tab, const QString &label) = 0;

  /// Sets the enabled states of buttons and commands anew.
  virtual void validateProblemUI() = 0;
  virtual void showProblemWindow() = 0;
  /// Shows or hides the note that phonetic matching or ignored plurals list names that may well differ.
  virtual void setPhoneticWarningVisible(bool visible) = 0;
  /// Shows or hides the warning that the music application does not answer. Called often with the same state.
  virtual void setUnresponsiveWarningVisible(bool visible) = 0;

  /// The preferences window.
  virtual void revealPreferences(const QString &tabIdentifier) = 0;
  /// The two path controls of the "library" tab (empty for none) and the song count below them.
  virtual void setLibraryPaths(const QString &libraryFolder, const QString &mediaFolder) = 0;
  virtual void setLibrarySongCount(const QString &text) = 0;
  virtual void setSettingsNoteVisible(int group, bool visible) = 0;
  /// Scrolls a table so that a row is the topmost one, as far as there are rows.
  virtual void scrollToTop(ProblemTab /*tab*/, qsizetype /*row*/) {}
  /// Asks for one folder, starting at a path; empty if the user cancels.
  virtual QString chooseFolder(const QString &message, const QString &startPath) = 0;

  /// Told at the end of each load with the number of kept tracks; with 0 no scan follows.
  virtual void libraryDidLoad(qsizetype /*tracks*/) {}
  /// Told once at the very end of each merge, after its alerts; what it did stands in `MergeState::report`.
  virtual void mergeDidEnd() {}
  /// Told once at the very end of each scan, after its results or its error have been presented.
  virtual void scanDidEnd() = 0;
};
