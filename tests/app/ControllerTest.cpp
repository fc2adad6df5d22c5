#include <QDir>

#include "app/MainController.h"
#include "app/library/LibraryFile.h"
#include "app/library/LibraryLocation.h"
#include "audio/SongFileInfoCache.h"
#include "platform/qt/LibplistPropertyList.h"
#include "support/BMLog.h"
#include "support/Preferences.h"
#include "tests/fixtures/IdleCommands.h"
#include "tests/fixtures/LibraryText.h"
#include "tests/fixtures/ScriptedView.h"
#include "tests/fixtures/TestPlatform.h"
#include "values/Keys.h"

namespace {

QByteArray trackXml(int number, const char *kind = "MPEG audio file") {
  return libraryText::track(number, "Song " + QByteArray::number(number),
                            libraryText::text("Artist", "A") + libraryText::text("Kind", kind) +
                                "<key>Total Time</key><integer>1000</integer>");
}

QByteArray libraryXml(int tracks) {
  QByteArray list;
  for (int number = 1; number <= tracks; ++number) list += trackXml(number);
  return libraryText::library(list + trackXml(tracks + 1, "MPEG-4 video file"));
}

/// The controller with scan threads that the test writes, over a library file in the home folder.
class Controller : public TestPlatform, public IdleCommands {
 protected:
  Controller() : controller(view) {
    controller.appState().commands = this;
    const auto done = [this](std::atomic<bool> OperationState::*flag) {
      return [this, flag] { controller.appState().operation.*flag = true; };
    };
    threads = {done(&OperationState::mCompletedOperation),
               done(&OperationState::mCompletedFindInconsistentNames),
               done(&OperationState::mCompletedFindMissingAndOrphans)};
    iTunesInterface::resetLibraryCache();
  }

  void putLibrary(const QByteArray &bytes) { writeFile(libraryFile, bytes); }

  /// Launches and runs until a scan or a failed load has ended.
  void launch() {
    controller.scanDriver().setThreads(threads);
    controller.awakeFromNib();
    EXPECT_TRUE(time.runUntil([this] { return view.scansEnded > 0 || view.loadedTracks == 0; }));
    time.run(1.0);
  }

  void scanAgain() {
    const int before = view.scansEnded;
    controller.scanDriver().setThreads(threads);
    controller.scanDriver().reFindProblems();
    EXPECT_TRUE(time.runUntil([&] { return view.scansEnded > before; }));
  }

  void addRows(ProblemTab tab, int count) {
    for (int row = 0; row < count; ++row) {
      const Dictionary made = Dictionary::make();
      made.set(keys::DupeGroup, 1);
      controller.appState().lists[tab].append(made);
    }
  }

  void doGetDefaultLibraryWhenNewerThan(std::optional<Date> date) override {
    controller.libraryLoader().doGetDefaultLibraryWhenNewerThan(date);
  }
  void reloadLibraryAndScan() override { controller.scanDriver().reloadLibraryAndScan(); }
  void doFindProblems() override { controller.scanDriver().doFindProblems(); }
  void scanLibraryForProblems() override { controller.scanDriver().scanLibraryForProblems(); }
  void launchiTunesAndScanWhenReady() override {
    controller.applicationWatch().launchiTunesAndScanWhenReady();
  }
  void chooseNewMediaFolder() override { controller.chooseNewMediaFolder(); }
  void quitNow() override { controller.quitNow(); }
  void doAutomark() override { ++automarks; }
  bool readState() override { return hasSavedMerge; }
  void recoverFromReadState() override {
    ++recoveries;
    controller.scanDriver().revealSavedProblems();
  }

  ScriptedView view;
  bool hasSavedMerge = false;
  int recoveries = 0;
  int automarks = 0;
  MainController controller;
  ScanThreads threads;
  const QString libraryFile = QStringLiteral("home/Music/iTunes/iTunes Library.xml");
};

}  // namespace

TEST_F(Controller, ALaunchLoadsAndScansAndPresentsTheFirstTabWithRows) {
  putLibrary(libraryXml(3));
  setPreference(prefs::busy, true);
  threads.scanLibraryForMissingAndOrphansThread = [this] {
    addRows(ProblemTab::Orphans, 1);
    addRows(ProblemTab::Missing, 2);
    controller.appState().operation.mCompletedFindMissingAndOrphans = true;
  };
  launch();
  EXPECT_EQ(view.loadedTracks, 3);
  EXPECT_EQ(view.tab, ProblemTab::Orphans);
  EXPECT_TRUE(view.tabLabels[0].endsWith(QStringLiteral(" (0)")));
  EXPECT_TRUE(view.tabLabels[3].endsWith(QStringLiteral(" (2)")));
  EXPECT_EQ(view.mediaPath, QStringLiteral("/M"));
  EXPECT_FALSE(view.progressShown);
  EXPECT_TRUE(preference(prefs::busy).isNull());
  EXPECT_DOUBLE_EQ(view.progressMaximum, (3 * 2 + 10 * 3) / 1000.0);
  for (const char16_t *line : {u"---- LAUNCH ----", u"... 3 tracks, music folder (manual:0): [/M]",
                               u"(0 dupe, 0 incon, 1 orphan, 2 missing)"}) {
    EXPECT_TRUE(logContains(QString::fromUtf16(line))) << qPrintable(logText());
  }
}

TEST_F(Controller, ASavedMergeTakesThePlaceOfTheFirstScanOnceThereAreTracks) {
  hasSavedMerge = true;
  // Without a scan at the start the library is loaded for it all the same.
  setPreference(prefs::noScanAtStartup, true);
  setPreference(prefs::preferAudioFileBitRate, 160);
  controller.isMergeToGoOn = [this] { return hasSavedMerge; };
  putLibrary(libraryXml(0));
  launch();
  EXPECT_EQ(recoveries, 0) << "an empty library has nothing to merge";
  putLibrary(libraryXml(3));
  iTunesInterface::resetLibraryCache();
  controller.libraryLoader().doGetDefaultLibraryWhenNewerThan(std::nullopt);
  EXPECT_TRUE(time.runUntil([this] { return view.loadedTracks == 3; }));
  time.run(1.0);
  EXPECT_EQ(recoveries, 1);
  EXPECT_EQ(view.scansEnded + automarks, 0);
  EXPECT_TRUE(controller.appState().mHaveScannedLibraryForProblems) << "the window shows no lists";
  setPreference(prefs::noMatchTitle, true);
  EXPECT_TRUE(controller.prefsController().isChangedSinceScan(SettingsGroup::Duplicates));
}

TEST_F(Controller, AScanIsMarkedUnlessItsGroupsAreLoose) {
  putLibrary(libraryXml(3));
  const struct {
    bool noTitle, noArtist;
    int marked;
  } cases[] = {{false, false, 1}, {true, false, 0}, {false, true, 0}, {true, true, 0}};
  launch();
  for (const auto &[noTitle, noArtist, marked] : cases) {
    setPreference(prefs::noMatchTitle, noTitle);
    setPreference(prefs::noMatchArtist, noArtist);
    automarks = 0;
    scanAgain();
    EXPECT_EQ(automarks, marked) << noTitle << noArtist;
    controller.scanDriver().revealFoundProblems(false);
    EXPECT_EQ(automarks, marked) << "presenting the lists again is no scan";
  }
}

TEST_F(Controller, TheEndOfTheProcessWritesWhatIsRememberedAndClosesTheLog) {
  AppState &state = controller.appState();
  setPreference(prefs::manualMediaPath, QStringLiteral("/M"));
  const Array pids = Array::make();
  pids.append(QStringLiteral("A"));
  state.ignoredDuplicates.addIgnoredDuplicatePIDs(pids);
  state.untrustedLocations.untrustedLocationPIDsArray().append(QStringLiteral("B"));
  EXPECT_EQ(preference(QStringLiteral("NotDup-/M")).toArray().size(), 0);
  controller.problemWindowFrame = [] { return QStringLiteral("{{1, 2}, {3, 4}}"); };
  BMLog("something");
  SongFileInfoCache &cache = SongFileInfoCache::sharedCache();
  const QString song = folder(QStringLiteral("music/a.mp3"));
  const QString remembered = cache.pathForKeyNumber(*SongFileInfoCache::keyNumberForPath(song));
  cache.storeInfoForSongFileAtPath(Dictionary::make(), song);
  controller.applicationWillTerminate();
  EXPECT_TRUE(QFile::exists(remembered)) << "what was learned of songs";
  EXPECT_EQ(prefs::text(prefs::problemWinFrame), QStringLiteral("{{1, 2}, {3, 4}}"));
  EXPECT_FALSE(QFile::exists(logFilePath()));
  EXPECT_TRUE(QFile::exists(logFilePath().chopped(4) + QStringLiteral(".zip")));
  EXPECT_EQ(preference(QStringLiteral("NotDup-/M")).toArray().size(), 1);
  EXPECT_EQ(preference(prefs::untrustedPIDs_3).toArray().at(0).toText(), QStringLiteral("B"));
}

TEST_F(Controller, ALibraryThatCannotBeReadIsToldAndLeavesAnEmptyOne) {
  const struct {
    const char *name;
    QByteArray bytes;
    bool alert;
  } cases[] = {
      {"none", {}, true},
      {"empty", QByteArray(""), true},
      {"no library",
       "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>A</key><integer>1</integer></dict></plist>",
       true},
      {"a list", "<plist><array></array></plist>", true},
      {"cut in its head", libraryXml(3).left(100), true},
      {"without tracks", libraryXml(0), false},
  };
  for (const auto &[name, bytes, alert] : cases) {
    QDir(folder(QStringLiteral("home/Music"))).removeRecursively();
    if (!bytes.isNull()) putLibrary(bytes);
    iTunesInterface::resetLibraryCache();
    view.calls.clear();
    view.loadedTracks = -1;
    launch();
    EXPECT_EQ(view.noted("alert BadLibraryTitle"), alert) << name;
    EXPECT_TRUE(view.noted("prefs library")) << name;
    EXPECT_EQ(view.scansEnded, 0) << name;
    EXPECT_FALSE(view.progressShown) << name;
  }
}

TEST_F(Controller, NoScanAtStartupStartsNothing) {
  putLibrary(libraryXml(3));
  setPreference(prefs::noScanAtStartup, true);
  setPreference(prefs::preferAudioFileBitRate, 160);
  controller.awakeFromNib();
  time.run(5.0);
  EXPECT_EQ(view.loadedTracks, -1);
  EXPECT_FALSE(view.noted("beginProgress"));
}

TEST_F(Controller, ABusyFlagBeepsAndStartsNothing) {
  putLibrary(libraryXml(3));
  launch();
  setPreference(prefs::busy, true);
  controller.scanDriver().scanLibraryForProblems();
  controller.scanDriver().reloadLibraryAndScan();
  EXPECT_EQ(view.calls.count(QStringLiteral("beep")), 2);
  EXPECT_TRUE(logContains(QStringLiteral("!!! scanLibraryForProblems invoked while busy")));
  EXPECT_TRUE(logContains(QStringLiteral("!!! reloadLibraryAndScan invoked while busy")));
}

TEST_F(Controller, AFileThatVanishedDoesNotStopAScan) {
  putLibrary(libraryXml(3));
  launch();
  QFile::remove(folder(libraryFile));
  scanAgain();
  EXPECT_EQ(view.loadedTracks, 3);
}

TEST_F(Controller, ACancelKeepsWhatWasFoundAndSaysNothingOfNoProblems) {
  putLibrary(libraryXml(3));
  threads.scanLibraryForDuplicatesThread = [this] {
    OperationState &operation = controller.appState().operation;
    while (!operation.mCancelOperation) platform().clock->sleep(0.1);
    addRows(ProblemTab::Duplicates, 2);
  };
  controller.scanDriver().setThreads(threads);
  controller.awakeFromNib();
  ASSERT_TRUE(time.runUntil([this] { return view.progressMaximum > 0; }));
  controller.doCancelOperation("Test");
  ASSERT_TRUE(time.runUntil([this] { return view.scansEnded == 1; }));
  EXPECT_EQ(controller.appState().lists.mDuplicateSongDicts.size(), 2);
  EXPECT_FALSE(view.noted("alert NoProblemsTitle"));
  EXPECT_TRUE(view.noted("explainDuplicates"));
  EXPECT_TRUE(logContains(QStringLiteral("doCancelOperation <Test")));
}

TEST_F(Controller, AReasonStopsAllThreadsAndIsShownInsteadOfTheResults) {
  putLibrary(libraryXml(3));
  threads.scanLibraryForMissingAndOrphansThread = [this] {
    controller.appState().operation.setCancelOperationReason(QStringLiteral("no folder"));
  };
  launch();
  ASSERT_TRUE(view.noted("sheet ScanErrorTitle"));
  EXPECT_TRUE(view.alerts.last().message.endsWith(QStringLiteral("\n\nno folder")));
  EXPECT_EQ(controller.appState().operation.cancelOperationReason(), QString());
  controller.appState().operation.mCancelOperation = true;
  controller.appState().operation.setCancelOperationReason({});
  EXPECT_TRUE(controller.appState().operation.mCancelOperation);
}

TEST_F(Controller, NoProblemsOffersTheSettings) {
  putLibrary(libraryXml(1));
  view.answers.insert(QStringLiteral("NoProblemsTitle"), 1);
  launch();
  EXPECT_TRUE(view.noted("prefs dupe"));
  EXPECT_DOUBLE_EQ(view.progressMaximum, 0.01);
  EXPECT_FALSE(view.tabLabels[0].contains(u'('));
}

TEST_F(Controller, TheWaitForANewerFileEndsWithItOrAfterTwoMinutes) {
  putLibrary(libraryXml(3));
  controller.scanDriver().setThreads(threads);
  const Date fileDate = *iTunesInterface::currentMusicLibraryDate();
  double begin = time.now().seconds;
  controller.libraryLoader().doGetDefaultLibraryWhenNewerThan(Date{fileDate.seconds - 0.75});
  EXPECT_LT(time.now().seconds - begin, 0.1);
  controller.libraryLoader().doGetDefaultLibraryWhenNewerThan(Date{fileDate.seconds - 0.5});
  EXPECT_LT(time.now().seconds - begin, 0.1) << "a second load began during the first";
  ASSERT_TRUE(time.runUntil([this] { return view.scansEnded == 1; }));
  begin = time.now().seconds;
  controller.libraryLoader().doGetDefaultLibraryWhenNewerThan(Date{fileDate.seconds - 0.5});
  EXPECT_NEAR(time.now().seconds - begin, 120.0, 1.0);
  EXPECT_TRUE(logContains(QStringLiteral("... GAVE UP waiting!")));
}

TEST_F(Controller, QuittingDuringALoadStartsNothingAndTellsNothing) {
  for (const QByteArray &bytes : {libraryXml(3), QByteArrayLiteral("no library")}) {
    putLibrary(bytes);
    controller.appState().mIsEnding = false;
    controller.appState().mMusicLibraryBusy = false;
    controller.scanDriver().setThreads(threads);
    controller.libraryLoader().doGetDefaultLibraryWhenNewerThan(std::nullopt);
    controller.customTerminate();
    controller.appState().endAllWork();
    time.run(1.0);
    EXPECT_EQ(view.loadedTracks, -1);
    EXPECT_TRUE(view.alerts.isEmpty());
    EXPECT_EQ(time.timerCount(), 0);
  }
}

TEST_F(Controller, NothingRunsForAControllerThatIsGone) {
  putLibrary(libraryXml(3));
  auto other = std::make_unique<MainController>(view);
  other->appState().commands = this;
  other->awakeFromNib();
  while (Workers::runningInProcess() > 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  view.chosenFolder = folder();
  other->chooseNewMediaFolder();
  other.reset();
  EXPECT_EQ(time.timerCount(), 0);
  time.run(1.0);
  EXPECT_EQ(view.loadedTracks, -1);
}

TEST_F(Controller, AResetDuringAScanStartsNoSecondOperation) {
  putLibrary(libraryXml(3));
  threads.scanLibraryForDuplicatesThread = [this] {
    while (!controller.appState().operation.mCancelOperation) platform().clock->sleep(0.1);
  };
  controller.scanDriver().setThreads(threads);
  controller.awakeFromNib();
  ASSERT_TRUE(time.runUntil([this] { return view.progressMaximum > 0; }));
  controller.prefsController().resetToDefaults(true);
  EXPECT_TRUE(preference(prefs::busy).isNull());
  EXPECT_TRUE(view.noted("beep"));
  EXPECT_FALSE(controller.appState().mMusicLibraryBusy);
  controller.doCancelOperation("Test");
  EXPECT_TRUE(time.runUntil([this] { return view.scansEnded == 1; }));
  EXPECT_FALSE(controller.currentOperation().isBusy());
}

TEST_F(Controller, ALoadThatRunsOutOfMemoryIsToldAndItsSheetEnds) {
  class NoMemory : public LibplistPropertyList {
    Value parse(QByteArrayView bytes, QString *error) const override {
      if (bytes.indexOf(QByteArrayView("<key>Tracks</key>")) >= 0) throw std::bad_alloc();
      return LibplistPropertyList::parse(bytes, error);
    }
  } lists;
  services.propertyLists = &lists;
  setPlatform(services);
  putLibrary(libraryXml(3));
  launch();
  EXPECT_TRUE(view.noted("alert BadLibraryTitle"));
  EXPECT_EQ(view.loadedTracks, 0);
  EXPECT_FALSE(view.progressShown);
  EXPECT_TRUE(view.cancelEnabled);
  EXPECT_FALSE(prefs::isTrue(prefs::noSystemDeserialize));
}

TEST_F(Controller, SettingsThatCannotBeSavedAreToldAndTheScanGoesOn) {
  putLibrary(libraryXml(3));
  preferences.failSynchronize(QStringLiteral("disk full"));
  launch();
  ASSERT_TRUE(view.noted("alert PrefsNotSavedTitle"));
  EXPECT_TRUE(view.alerts.first().message.endsWith(QStringLiteral("\n\ndisk full")));
  EXPECT_EQ(view.scansEnded, 1);
}

TEST_F(Controller, TheProgressTellsWhatWasFoundSoFar) {
  putLibrary(libraryXml(3));
  const auto addUnderLock = [this](ProblemTab tab, int rows) {
    const ObjectLock lock = controller.appState().threadLockForObject(controller.appState().lists[tab]);
    std::lock_guard held(*lock);
    addRows(tab, rows);
  };
  threads.scanLibraryForDuplicatesThread = [this, addUnderLock] {
    OperationState &operation = controller.appState().operation;
    addUnderLock(ProblemTab::Missing, 1);
    addUnderLock(ProblemTab::Duplicates, 2);
    operation.mNumberOfComparisons = 0.5;
    platform().clock->sleep(1.2);
    // The amount stands on a whole number: the ticks pass without a look at the lists.
    operation.mNumberOfComparisons = 7.0;
    platform().clock->sleep(0.6);
    addUnderLock(ProblemTab::Orphans, 5);
    platform().clock->sleep(1.2);
    operation.mCompletedOperation = true;
  };
  launch();
  ASSERT_FALSE(view.subTexts.isEmpty());
  EXPECT_EQ(view.subTexts.first(), QStringLiteral("2 duplicates, 1 missing track"));
  EXPECT_EQ(view.subTexts.last(), view.subTexts.first());
  EXPECT_FALSE(view.progressIndeterminate);
  EXPECT_DOUBLE_EQ(view.progressValue, 7.0);
}

TEST_F(Controller, AChosenMediaFolderIsKeptAndScannedAndAMissingOneOnlyBeeps) {
  putLibrary(libraryXml(3));
  launch();
  view.chosenFolder = folder(QStringLiteral("gone"));
  controller.chooseNewMediaFolder();
  EXPECT_EQ(view.folderStart, services.folders.music);
  EXPECT_TRUE(view.noted("beep"));
  EXPECT_TRUE(preference(prefs::manualMediaPath).isNull());
  view.chosenFolder = folder(QStringLiteral("music"));
  controller.chooseNewMediaFolder();
  EXPECT_EQ(prefs::text(prefs::manualMediaPath), view.chosenFolder);
  ASSERT_TRUE(time.runUntil([this] { return view.scansEnded == 2; }));
  EXPECT_EQ(view.mediaPath, view.chosenFolder);
  controller.chooseNewMediaFolder();
  EXPECT_EQ(view.folderStart, view.chosenFolder);
}

TEST_F(Controller, ALibraryIsStaleFromMoreThanHalfASecondOn) {
  putLibrary(libraryXml(3));
  launch();
  std::optional<Date> &last = controller.appState().library.mLastLibraryDate;
  const struct {
    std::optional<double> olderBy;
    int loads;
  } cases[] = {{0.5, 0}, {0.0, 0}, {-9.0, 0}, {0.51, 1}, {std::nullopt, 1}};
  for (const auto &[olderBy, loads] : cases) {
    const Date file = *iTunesInterface::currentMusicLibraryDate();
    last = olderBy ? std::optional(Date{file.seconds - *olderBy}) : std::nullopt;
    view.loadedTracks = -1;
    scanAgain();
    EXPECT_EQ(view.loadedTracks, loads > 0 ? 3 : -1) << olderBy.value_or(-1);
  }
}
