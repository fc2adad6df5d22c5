#pragma once

#include <QTest>

#include "desktop/DesktopView.h"
#include "desktop/PreferencesWindow.h"
#include "desktop/ProblemWindow.h"
#include "desktop/ProgressPanel.h"
#include "program/Application.h"
#include "tests/fixtures/TestPlatform.h"

/// The whole application with its real windows on a platform without a screen, in virtual time.
class DesktopFixture : public TestPlatform {
 protected:
  DesktopFixture();
  ~DesktopFixture() override;

  /// Writes a library of `songs` songs, each twice, and one more, with their files.
  void writeLibrary(int songs);
  /// Launches and runs until the first scan has ended.
  void launch();
  /// Runs loop and windows until the test holds.
  bool runUntil(const std::function<bool()> &done);
  /// Lets what is posted and painted happen.
  void settle();
  /// A scan whose thread adds the rows one group at a time, and then waits to be cancelled.
  void useEndlessScan(int rows);

  /// The sheet in sight that is not the progress sheet; none if there is none.
  static SheetDialog *sheet();
  /// Presses the button of the next alert, which runs its own event loop.
  void answerNextAlert(int index);
  template <class Widget>
  static Widget *find(QWidget *parent, const QString &name) {
    Widget *found = parent->findChild<Widget *>(name);
    EXPECT_TRUE(found) << name.toStdString();
    return found;
  }
  AppState &state() { return application.state(); }
  ProblemTable &table() { return view.problemWindow()->page(ProblemTab::Duplicates).table(); }
  ProblemTable &names() { return view.problemWindow()->page(ProblemTab::Names).table(); }
  /// Shows the window with these many rows, three in a group.
  void showDuplicates(int rows);
  /// The middle of a cell, in the viewport.
  static QPoint middleOf(const ProblemTable &shown, int row, Key column);
  static QDialog *progressSheet();

  /// Saves a picture of a widget for a person to look at, and answers it.
  static QImage picture(QWidget *widget, const QString &name);
  static QPalette lightPalette();
  static QPalette darkPalette();

  DesktopView view;
  Application application{view};
  QStringList alertsAnswered;
};

/// A row of the duplicates' table.
Dictionary makeRow(int number, int group);
/// A row of the names' table, of the type "RKIsArtistMatched" or "RKIsAlbumMatched", with a song for each
/// spelling.
Dictionary makeNameRow(const QString &type, const QString &preferred, const QStringList &spellings);
