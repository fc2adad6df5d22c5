#include <QApplication>
#include <QPushButton>
#include <QTabWidget>

#include "desktop/Colours.h"
#include "support/Preferences.h"
#include "tests/desktop/DesktopFixture.h"
#include "values/Keys.h"

namespace {

/// How far apart two colours are to the eye, 1 to 21, by the formula of WCAG 2.1, "contrast ratio".
double contrast(const QColor &a, const QColor &b) {
  const auto luminance = [](const QColor &colour) {
    const auto part = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
  };
  const double first = luminance(a), second = luminance(b);
  return (qMax(first, second) + 0.05) / (qMin(first, second) + 0.05);
}

class Pictures : public DesktopFixture, public ::testing::WithParamInterface<bool> {
 protected:
  void SetUp() override { QApplication::setPalette(GetParam() ? darkPalette() : lightPalette()); }
  QString name(const char *what) const {
    return QLatin1String(what) + (GetParam() ? u"-dark"_qs : u"-light"_qs);
  }
  void take(QWidget *widget, const char *what) {
    QApplication::processEvents();
    const QImage image = picture(widget, name(what));
    EXPECT_EQ(image.pixelColor(3, image.height() - 3).lightness() < 128, GetParam()) << what;
  }
};

}  // namespace

TEST_P(Pictures, OfTheWindowInItsStatesAndSizes) {
  ProblemWindow *window = view.problemWindow();
  view.showProblemWindow();
  window->resize(900, 560);
  take(window, "window-no-library");
  showDuplicates(61);
  application.doAutomark();
  application.controller().scanDriver().updateProblemNumbers();
  table().setCurrentIndex(table().rows().index(4, 0));
  view.validateProblemUI();
  take(window, "window-900");
  window->resize(1600, 1000);
  take(window, "window-1600");
  window->resize(900, 560);
  state().lists.mDuplicateSongDicts = Array::make();
  const Array tracks = Array::make();
  tracks.append(makeRow(1, 1));
  state().library.mMusicLibrarySortedTracks = tracks;
  view.reloadTable(ProblemTab::Duplicates);
  take(window, "window-none-found");
  view.selectTab(ProblemTab::Names);
  take(window, "window-no-names");
  const QString artist = keys::RKIsArtistMatched.text(), album = keys::RKIsAlbumMatched.text();
  for (int i = 0; i < 5; ++i) {
    const Array &list = state().lists.mInconsistentNameDicts;
    list.append(
        makeNameRow(artist, u"The Beatles"_qs, {u"beatles"_qs, u"The Beatles"_qs, u"the beatles"_qs}));
    list.append(
        makeNameRow(artist, u"Simon & Garfunkel"_qs, {u"Simon and Garfunkel"_qs, u"Simon & Garfunkel"_qs}));
    list.append(makeNameRow(album, u"Hello, Goodbye"_qs, {u"hello goodbye "_qs, u"Hello, Goodbye"_qs}));
    list.append(makeNameRow(album, u"A"_qs, {QString(200, u'a'), u"A"_qs, QString(90, u'A')}));
  }
  view.reloadTable(ProblemTab::Names);
  view.setPhoneticWarningVisible(true);
  names().setCurrentIndex(names().rows().index(1, 0));
  take(window, "window-names");
}

TEST_P(Pictures, OfSheetsAndPreferences) {
  view.showProblemWindow();
  view.setProgressText(u"Looking for problems…"_qs);
  view.setProgressQuote(u"Listen closely: two songs may be one, and one may be gone."_qs);
  view.setProgressSubText(u"1,204 duplicates, 37 inconsistent names"_qs);
  view.setProgressIndeterminate(false);
  view.setProgressMaximum(2.0e9);
  view.setProgressValue(0.9e9);
  view.beginProgressSheet();
  take(progressSheet(), "progress");
  view.endProgressSheet();
  view.beginExplainDuplicatesSheet();
  take(sheet(), "explain");
  view.endAllSheets();
  view.beginSheet({u"K"_qs,
                   u"Some playlists are too long to keep their order"_qs,
                   u"A line\n"_qs.repeated(40),
                   {u"Cancel"_qs, u"Merge Anyway"_qs},
                   true},
                  {});
  EXPECT_LE(sheet()->height(), view.problemWindow()->height()) << "a long list is scrolled";
  take(sheet(), "alert");
  view.endAllSheets();
  state().merge.report.addFailure({u"An Artist \"A Song\""_qs, u"/music/a.mp3"_qs, u"a reason"_qs});
  view.mergeDidEnd();
  find<QPushButton>(view.problemWindow(), u"MergeSummary-Details"_qs)->click();
  take(sheet(), "merge-summary");
  view.endAllSheets();
  view.setLibraryPaths(
      u"/home/someone/Music/iTunes"_qs,
      u"/home/someone/Music/iTunes/iTunes Media/of/a/path/that/is/longer/than/the/window"_qs);
  view.setLibrarySongCount(u"12,345 in the library"_qs);
  for (const int group : {0, 1, 2}) view.setSettingsNoteVisible(group, true);
  prefs::set(prefs::preferAudioData15, 4);
  for (const char *tab : {"library", "dupe", "marks", "names", "merge"}) {
    view.revealPreferences(QLatin1String(tab));
    take(view.preferencesWindow(), (std::string("preferences-") + tab).c_str());
  }
}

TEST_P(Pictures, KeepTextReadableOnEveryGround) {
  const QPalette palette = QApplication::palette();
  const QColor text = palette.color(QPalette::Text);
  EXPECT_GT(contrast(text, colours::stripe(palette)), 4.5);
  EXPECT_GT(contrast(palette.color(QPalette::WindowText), colours::note(palette)), 4.5);
  EXPECT_GT(contrast(colours::secondaryText(palette), palette.color(QPalette::Window)), 4.5);
  EXPECT_GT(contrast(palette.color(QPalette::Base), colours::stripe(palette)), 1.08) << "stripes are seen";
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, Pictures, ::testing::Bool(),
                         [](const auto &one) { return one.param ? "Dark" : "Light"; });
