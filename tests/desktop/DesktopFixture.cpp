#include "tests/desktop/DesktopFixture.h"

#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QTimer>

#include "app/library/LibraryFile.h"
#include "app/library/LibraryLocation.h"
#include "support/Preferences.h"
#include "values/Keys.h"

namespace {

/// The toolkit's application object, on a platform that needs no display.
class OffscreenApplication : public ::testing::Environment {
 public:
  void SetUp() override {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "desktop_tests";
    static char *arguments[] = {name, nullptr};
    application = std::make_unique<QApplication>(count, arguments);
    QApplication::setStyle(QStringLiteral("Fusion"));
  }
  void TearDown() override { application.reset(); }

 private:
  std::unique_ptr<QApplication> application;
};

const auto *const environment = ::testing::AddGlobalTestEnvironment(new OffscreenApplication);

Dictionary makeTrack(int id, const QString &file) {
  const Dictionary track = Dictionary::make();
  track.set(keys::PersistentID, QStringLiteral("%1").arg(id, 16, 16, QChar(u'0')));
  track.set(keys::Name, QStringLiteral("Song %1").arg(id / 2));
  track.set(keys::Artist, QStringLiteral("The Artist"));
  track.set(keys::Album, QStringLiteral("Album %1").arg(id % 3));
  track.set(keys::Kind, QStringLiteral("MPEG audio file"));
  track.set(keys::TotalTime, 180000 + id / 2 * 1000);
  track.set(keys::Size, 4821000);
  track.set(keys::BitRate, id % 2 == 0 ? 192 : 256);
  track.set(keys::Year, 1987);
  track.set(keys::Location, QStringLiteral("file://") + file);
  return track;
}

}  // namespace

Dictionary makeRow(int number, int group) {
  const Dictionary row = Dictionary::make();
  row.set(keys::Name, QStringLiteral("Song number %1").arg(group));
  row.set(keys::Artist, QStringLiteral("An Artist"));
  row.set(keys::Album, QStringLiteral("An Album of a Longer Name"));
  row.set(keys::TotalTime, 61000 + number * 977);
  row.set(keys::Kind, number % 2 == 0 ? QStringLiteral("MPEG audio file") : QStringLiteral("AAC audio file"));
  row.set(keys::BitRate, number % 2 == 0 ? 192 : 256);
  row.set(keys::Size, qint64(3'200'000) + number * 1777);
  row.set(keys::Year, 1970 + number % 50);
  row.set(
      keys::Path,
      QStringLiteral("/home/someone/Music/iTunes/iTunes Media/Music/An Artist/An Album/%1.mp3").arg(number));
  row.set(keys::Rating, number % 6 * 20);
  row.set(keys::TrackNumber, number % 12 + 1);
  row.set(keys::TrackCount, 12);
  row.set(keys::DupeGroup, group);
  row.set(keys::UIStripe, group % 2 == 0);
  return row;
}

Dictionary makeNameRow(const QString &type, const QString &preferred, const QStringList &spellings) {
  const Array songs = Array::make();
  const Key key = type == keys::RKIsArtistMatched.text() ? keys::Artist : keys::Album;
  for (const QString &spelling : spellings) {
    const Dictionary song = Dictionary::make();
    song.set(keys::Artist, QStringLiteral("An Artist"));
    song.set(key, spelling);
    song.set(keys::Name, QStringLiteral("A Song"));
    songs.append(song);
  }
  const Dictionary row = Dictionary::make();
  row.set(keys::inconType, type);
  row.set(keys::inconSongs, songs);
  row.set(keys::inconPref, preferred);
  return row;
}

DesktopFixture::DesktopFixture() {
  iTunesInterface::resetLibraryCache();
  // Not the first run, which would take the other settings back.
  prefs::set(prefs::preferAudioFileBitRate, 160);
  prefs::set(prefs::allowedDurationVariation, 10);
  view.attach(application);
}

DesktopFixture::~DesktopFixture() {
  application.controller().onTerminate = {};
  view.detach();
  QApplication::setPalette(lightPalette());
}

void DesktopFixture::writeLibrary(int songs) {
  const Dictionary tracks = Dictionary::make();
  for (int i = 0; i < songs * 2 + 1; ++i) {
    const QString file =
        writeFile(QStringLiteral("home/Music/iTunes/iTunes Media/Music/%1.mp3").arg(i), "audio");
    tracks.set(Key(QString::number(i)), makeTrack(i, file));
  }
  const Dictionary root = Dictionary::make();
  root.set(keys::MusicFolder,
           QStringLiteral("file://%1/").arg(folder(QStringLiteral("home/Music/iTunes/iTunes Media"))));
  root.set(keys::Tracks, tracks);
  root.set(keys::Playlists, Array::make());
  QString error;
  writeFile(QStringLiteral("home/Music/iTunes/iTunes Music Library.xml"),
            platform().propertyLists->write(root, SystemPropertyList::Format::Xml, &error));
  EXPECT_EQ(error, QString());
}

void DesktopFixture::launch() {
  application.controller().awakeFromNib();
  EXPECT_TRUE(runUntil([this] { return state().mHaveScannedLibraryForProblems; }));
  settle();
}

bool DesktopFixture::runUntil(const std::function<bool()> &done) {
  return time.runUntil([&] {
    QApplication::processEvents();
    return done();
  });
}

void DesktopFixture::settle() {
  QApplication::processEvents();
  time.run(0.3);
  QApplication::processEvents();
}

void DesktopFixture::useEndlessScan(int rows) {
  ScanThreads threads;
  threads.scanLibraryForDuplicatesThread = [this, rows] {
    OperationState &operation = state().operation;
    const Array list = state().lists.mDuplicateSongDicts;
    for (int i = 0; i < rows; i += 2) {
      std::lock_guard held(*state().threadLockForObject(list));
      for (const int number : {i, i + 1}) list.append(makeRow(number, i / 2 + 1));
    }
    operation.mNumberOfComparisons = 0.0005;
    while (!operation.mCancelOperation) platform().clock->sleep(0.1);
    operation.mCompletedOperation = true;
  };
  threads.scanLibraryForInconsistentNamesThread = [this] {
    state().operation.mCompletedFindInconsistentNames = true;
  };
  threads.scanLibraryForMissingAndOrphansThread = [this] {
    state().operation.mCompletedFindMissingAndOrphans = true;
  };
  application.controller().scanDriver().setThreads(std::move(threads));
}

void DesktopFixture::showDuplicates(int rows) {
  for (int i = 0; i < rows; ++i) state().lists.mDuplicateSongDicts.append(makeRow(i, i / 3 + 1));
  state().mHaveScannedLibraryForProblems = true;
  view.problemWindow()->resize(900, 560);
  view.showProblemWindow();
  view.reloadTable(ProblemTab::Duplicates);
  view.validateProblemUI();
  QCoreApplication::processEvents();
}

QPoint DesktopFixture::middleOf(const ProblemTable &shown, int row, Key column) {
  for (int i = 0; i < shown.model()->columnCount(); ++i) {
    for (const ProblemTab tab : {ProblemTab::Duplicates, ProblemTab::Names}) {
      const std::vector<ProblemColumn> &columns = columnsOfTab(tab);
      if (int(columns.size()) == shown.model()->columnCount() && columns[size_t(i)].key == column) {
        return shown.visualRect(shown.model()->index(row, i)).center();
      }
    }
  }
  ADD_FAILURE() << column.text().toStdString();
  return {};
}

SheetDialog *DesktopFixture::sheet() {
  SheetDialog *found = nullptr;
  for (QWidget *widget : QApplication::topLevelWidgets()) {
    auto *candidate = dynamic_cast<SheetDialog *>(widget);
    if (candidate && candidate->isVisible() && !dynamic_cast<ProgressPanel *>(candidate)) found = candidate;
  }
  return found;
}

void DesktopFixture::answerNextAlert(int index) {
  QTimer::singleShot(5, qApp, [this, index] {
    SheetDialog *alert = sheet();
    if (!alert) return answerNextAlert(index);
    alertsAnswered.append(alert->objectName());
    picture(alert, QStringLiteral("alert-") + alert->objectName());
    alert->choose(index);
  });
}

QDialog *DesktopFixture::progressSheet() {
  for (QWidget *widget : QApplication::topLevelWidgets()) {
    auto *panel = dynamic_cast<ProgressPanel *>(widget);
    if (panel && panel->isVisible()) return panel;
  }
  return nullptr;
}

QImage DesktopFixture::picture(QWidget *widget, const QString &name) {
  const QString pictureFolder = QStringLiteral(TALLYFEN_PICTURE_FOLDER);
  QDir().mkpath(pictureFolder);
  const QImage image = widget->grab().toImage();
  EXPECT_TRUE(image.save(QStringLiteral("%1/%2.png").arg(pictureFolder, name)));
  return image;
}

QPalette DesktopFixture::lightPalette() {
  QPalette palette(QColor(0xef, 0xef, 0xef));
  palette.setColor(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

QPalette DesktopFixture::darkPalette() {
  QPalette palette(QColor(0x32, 0x32, 0x34), QColor(0x32, 0x32, 0x34));
  palette.setColor(QPalette::Base, QColor(0x22, 0x22, 0x24));
  palette.setColor(QPalette::Highlight, QColor(0x2a, 0x82, 0xda));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, QColor(0x44, 0x44, 0x46));
  palette.setColor(QPalette::ToolTipText, Qt::white);
  return palette;
}
