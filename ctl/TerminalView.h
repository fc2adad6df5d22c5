#pragma once

#include <functional>
#include <optional>

#include "app/state/ProblemView.h"
#include "ctl/ProgressBar.h"

/// The view of the terminal program: alerts become lines on standard error and get the answer that changes
/// nothing, unless a person is asked; progress becomes a bar if a person watches. Main thread.
class TerminalView : public ProblemView {
 public:
  explicit TerminalView(Terminal &terminal) : lines(terminal), bar(terminal) {}

  /// The load or the scan, whichever came last, has ended and nothing follows it.
  bool isOver() const { return over; }
  /// A critical alert was shown: the load or the scan failed.
  bool hasFailed() const { return failed; }
  /// A merge has begun and ended.
  bool isMergeOver() const { return mergeOver; }
  /// The user wants an end: cancels now, or as soon as what runs can be cancelled.
  void interrupt();
  bool isInterrupted() const { return interrupted; }
  /// What cancels the current operation.
  std::function<void()> onCancel;
  /// Answers a question with the index of a button where somebody can; without an answer nothing is changed.
  /// Not asked where no button is known to change nothing: such a choice is about windows.
  std::function<std::optional<int>(const Alert &)> onQuestion;
  /// From here on the bar tells of a merge: which song is worked on, rather than the step.
  void beginMerge();
  /// What was shown since then that tells of a failure: that something did not work, or a choice that nobody
  /// can make here.
  const std::vector<Alert> &problemsOfMerge() const { return problems; }

  int runAlert(const Alert &alert) override;
  void beginSheet(const Alert &alert, std::function<void(int)> done) override;
  void beginExplainDuplicatesSheet() override {}
  bool hasSheet() const override { return progressShown; }
  void endAllSheets() override { endProgressSheet(); }
  void beep() override {}

  void beginProgressSheet() override { progressShown = true; }
  void endProgressSheet() override;
  void setProgressText(const QString &text) override { bar.setText(text); }
  void setProgressQuote(const QString &) override {}
  void setProgressSubText(const QString &text) override;
  void setProgressIndeterminate(bool indeterminate) override { bar.setIndeterminate(indeterminate); }
  void setProgressMaximum(double maximum) override { bar.setMaximum(maximum); }
  void setProgressValue(double value) override { bar.setValue(value); }
  void setCancelEnabled(bool enabled) override;

  void reloadTable(ProblemTab) override {}
  void rememberSelection() override {}
  void restoreSelection() override {}
  std::vector<Dictionary> selectedRows(ProblemTab) const override { return {}; }
  void selectRows(ProblemTab, const std::vector<Dictionary> &) override {}
  ProblemTab currentTab() const override { return tab; }
  void selectTab(ProblemTab newTab) override { tab = newTab; }
  void setTabLabel(ProblemTab, const QString &) override {}
  void validateProblemUI() override {}
  void showProblemWindow() override {}
  void setPhoneticWarningVisible(bool) override {}
  void setUnresponsiveWarningVisible(bool visible) override;

  void revealPreferences(const QString &) override {}
  void setLibraryPaths(const QString &, const QString &) override {}
  void setLibrarySongCount(const QString &) override {}
  void setSettingsNoteVisible(int, bool) override {}
  QString chooseFolder(const QString &, const QString &) override { return {}; }

  void libraryDidLoad(qsizetype tracks) override { over = tracks == 0; }
  void scanDidEnd() override { over = true; }
  void mergeDidEnd() override { mergeOver = true; }
  /// The application ends before its work does, as the music application has quit: nothing follows any more.
  void applicationEnds() { over = mergeOver = failed = true; }

 private:
  Terminal &lines;
  ProgressBar bar;
  ProblemTab tab = ProblemTab::Duplicates;
  bool progressShown = false;
  bool cancelEnabled = true;
  bool interrupted = false;
  bool over = false;
  bool failed = false;
  bool merging = false;
  bool mergeOver = false;
  bool warnsUnresponsive = false;
  std::vector<Alert> problems;
};
