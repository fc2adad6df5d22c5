#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "desktop/DesktopView.h"
#include "desktop/DuplicateTable.h"
#include "desktop/NameTable.h"
#include "desktop/ProblemWindow.h"
#include "platform/qt/QtPlatform.h"
#include "program/Application.h"
#include "values/Keys.h"

// What a user waits for after a click in a list of 100,000 rows: the event, the change of the row, the
// enabled states, and the painting. One frame has 16 ms.

namespace {

constexpr int kRows = 100'000;

/// The whole application on a platform without a screen, with full tables.
struct Window {
  Window() {
    view.attach(application);
    AppState &state = application.state();
    for (int i = 0; i < kRows; ++i) state.lists.mDuplicateSongDicts.append(duplicate(i));
    for (int i = 0; i < kRows; ++i) state.lists.mInconsistentNameDicts.append(name(i));
    state.mHaveScannedLibraryForProblems = true;
    view.problemWindow()->resize(1600, 1000);
    view.showProblemWindow();
    for (const ProblemTab tab : {ProblemTab::Duplicates, ProblemTab::Names}) view.reloadTable(tab);
    view.validateProblemUI();
    QApplication::processEvents();
  }
  ~Window() { view.detach(); }

  static Dictionary duplicate(int i) {
    const Dictionary row = Dictionary::make();
    row.set(keys::Name, QStringLiteral("Song number %1").arg(i / 3));
    row.set(keys::Artist, QStringLiteral("An Artist"));
    row.set(keys::Album, QStringLiteral("An Album"));
    row.set(keys::Kind, QStringLiteral("MPEG audio file"));
    row.set(keys::BitRate, 192);
    row.set(keys::TotalTime, 180'000 + i);
    row.set(keys::Size, 4'800'000 + i);
    row.set(keys::TrackNumber, i % 12 + 1);
    row.set(keys::TrackCount, 12);
    row.set(keys::Year, 1990);
    row.set(keys::Path, QStringLiteral("/home/someone/Music/An Artist/An Album/%1.mp3").arg(i));
    row.set(keys::DupeGroup, i / 3 + 1);
    return row;
  }
  static Dictionary name(int i) {
    const Array songs = Array::make();
    for (const QString &spelling : {QStringLiteral("The Artist %1"), QStringLiteral("the artist %1")}) {
      const Dictionary song = Dictionary::make();
      song.set(keys::Artist, spelling.arg(i));
      songs.append(song);
    }
    const Dictionary row = Dictionary::make();
    row.set(keys::inconType, keys::RKIsArtistMatched.text());
    row.set(keys::inconSongs, songs);
    row.set(keys::inconPref, QStringLiteral("The Artist %1").arg(i));
    return row;
  }

  ProblemTable &table(ProblemTab tab) { return view.problemWindow()->page(tab).table(); }

  DesktopView view;
  Application application{view};
};

/// Made by `main`, between the application object's beginning and end.
std::unique_ptr<Window> made;

Window &window() {
  return *made;
}

void showRow(ProblemTab tab, int row) {
  window().view.selectTab(tab);
  ProblemTable &table = window().table(tab);
  table.scrollTo(table.model()->index(row, 0), QAbstractItemView::PositionAtCenter);
  QApplication::processEvents();
}

void click(ProblemTable &table, const QPoint &place, bool twice) {
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const auto first = twice && type == QEvent::MouseButtonPress ? QEvent::MouseButtonDblClick : type;
    QMouseEvent event(first, place, table.viewport()->mapToGlobal(place), Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table.viewport(), &event);
  }
  QApplication::processEvents();
}

/// A click on a mark of a row, again and again: set, cleared, set. `range(0)` is the row, `range(1)` tells
/// whether any other group has marks.
void markClick(benchmark::State &bench) {
  const int row = int(bench.range(0));
  if (bench.range(1) == 0) {
    window().application.automark().doUnmark();
  } else {
    window().application.automark().doAutomark();
  }
  showRow(ProblemTab::Duplicates, row);
  ProblemTable &table = window().table(ProblemTab::Duplicates);
  const QPoint place = table.visualRect(table.model()->index(row, 0)).center();
  for (auto round : bench) click(table, place, false);
  const Dictionary clicked = table.rows().row(row);
  const bool before = clicked.value(keys::markInfo).toBool();
  click(table, place, false);
  if (clicked.value(keys::markInfo).toBool() == before) bench.SkipWithError("the click has not arrived");
}

void spellingDoubleClick(benchmark::State &bench) {
  const int row = int(bench.range(0));
  showRow(ProblemTab::Names, row);
  ProblemTable &table = window().table(ProblemTab::Names);
  const QRect cell = table.visualRect(table.model()->index(row, 1));
  const QPoint places[] = {{cell.left() + 140, cell.center().y()}, {cell.left() + 20, cell.center().y()}};
  int at = 0;
  for (auto round : bench) click(table, places[++at % 2], true);
  const Dictionary clicked = table.rows().row(row);
  const QString before = clicked.value(keys::inconPref).toText();
  click(table, places[++at % 2], true);
  if (clicked.value(keys::inconPref).toText() == before) bench.SkipWithError("nothing was chosen");
}

void selectionMove(benchmark::State &bench) {
  window().application.automark().doUnmark();
  showRow(ProblemTab::Duplicates, kRows / 2);
  ProblemTable &table = window().table(ProblemTab::Duplicates);
  table.setCurrentIndex(table.model()->index(kRows / 2, 0));
  table.setFocus();
  bool down = true;
  for (auto round : bench) {
    QTest::keyClick(&table, down ? Qt::Key_Down : Qt::Key_Up);
    QApplication::processEvents();
    down = !down;
  }
}

BENCHMARK(markClick)
    ->ArgNames({"row", "othersMarked"})
    ->ArgsProduct({{0, kRows / 2, kRows - 1}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(spellingDoubleClick)
    ->ArgNames({"row"})
    ->Args({0})
    ->Args({kRows / 2})
    ->Args({kRows - 1})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(selectionMove)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char **argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QTemporaryDir temporary;
  QApplication application(argc, argv);
  BundleInformation bundle;
  bundle.identifier = QStringLiteral("org.tallyfen.Bench");
  bundle.version = bundle.shortVersion = QStringLiteral("1");
  const QString folder = temporary.path();
  const QtPlatform platform(bundle, {folder, folder, folder, folder, folder}, folder);
  benchmark::Initialize(&argc, argv);
  made = std::make_unique<Window>();
  benchmark::RunSpecifiedBenchmarks();
  made.reset();
}
