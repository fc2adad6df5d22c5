#include "app/MainController.h"
#include "app/library/LibraryFile.h"
#include "app/library/LibraryLocation.h"
#include "bridge/iTunesInterface.h"
#include "platform/FileAddress.h"
#include "support/Preferences.h"
#include "tests/bridge/ScriptedHost.h"
#include "tests/fixtures/IdleCommands.h"
#include "tests/fixtures/MemoryLibrary.h"
#include "tests/fixtures/RecordingWorkspace.h"
#include "tests/fixtures/ScriptedView.h"
#include "tests/fixtures/TestPlatform.h"
#include "values/Keys.h"

namespace {

/// A user's session in which the music application runs, quits and is launched as the test says.
class Session : public RecordingWorkspace {
 public:
  using RecordingWorkspace::RecordingWorkspace;
  bool launchApplication(const QString &) override {
    ++launches;
    if (canLaunch) setRunning(true);
    return canLaunch;
  }
  LibraryActivity libraryActivity() const override { return activity; }
  Subscription observeApplications(std::function<void(const RunningApplication &)> whenLaunched,
                                   std::function<void(const RunningApplication &)> whenTerminated) override {
    launched = std::move(whenLaunched);
    terminated = std::move(whenTerminated);
    return 1;
  }
  void stopObserving(Subscription) override { launched = terminated = {}; }

  /// Without a notice.
  void list(bool runs) {
    running.clear();
    if (runs) running.push_back(musicApplication());
  }
  void setRunning(bool runs) {
    list(runs);
    const auto told = runs ? launched : terminated;
    if (told) told(musicApplication());
  }

  bool canLaunch = true;
  LibraryActivity activity;

 private:
  std::function<void(const RunningApplication &)> launched, terminated;
};

/// The music application answers every script with the same text.
class SteadyHost : public ScriptHost {
 public:
  ScriptOutcome run(const QString &source) override {
    if (delay > 0) platform().clock->sleep(delay);
    const std::lock_guard held(lock);
    if (source.contains(u"refresh"_qs)) return ScriptedHost::resultOf(ScriptDescriptor::ofText(path));
    if (failure) return {{}, failure};
    return ScriptedHost::resultOf(ScriptDescriptor::ofText(u"1.0"_qs));
  }
  std::mutex lock;
  std::optional<ScriptFailure> failure;
  QString path;
  std::atomic<double> delay = 0;
};

class Watch : public TestPlatform, public IdleCommands {
 protected:
  Watch() : session(folder(u"home/Trash"_qs)) {
    services.scriptHost = &host;
    services.workspace = &session;
    session.list(true);
    services.libraryFramework = &library;
    setPlatform(services);
    controller = std::make_unique<MainController>(view);
    state().commands = this;
    controller->onTerminate = [this] { ended = true; };
    iTunesInterface::resetLibraryCache();
    const auto finish = [this](std::atomic<bool> OperationState::*flag) {
      return [this, flag] { state().operation.*flag = true; };
    };
    controller->scanDriver().setThreads({finish(&OperationState::mCompletedOperation),
                                         finish(&OperationState::mCompletedFindInconsistentNames),
                                         finish(&OperationState::mCompletedFindMissingAndOrphans)});
    library.mediaFolder = fileAddressOfPath(folder(u"music"_qs));
    setPreference(prefs::noScanAtStartup, true);
    setPreference(prefs::preferAudioFileBitRate, 160);
  }

  AppState &state() { return controller->appState(); }
  void addTracks(int count) {
    for (int number = 1; number <= count; ++number) {
      LibraryMediaItem track;
      track.persistentID = quint64(number);
      track.title = u"Song %1"_qs.arg(number);
      track.kind = u"MPEG audio file"_qs;
      track.totalTime = 1000;
      library.tracks.push_back(track);
    }
  }
  Dictionary row(const QString &pid, const QString &path) const {
    const Dictionary made = Dictionary::make();
    made.set(keys::PersistentID, pid);
    made.set(keys::Path, path);
    return made;
  }

  void doGetDefaultLibraryWhenNewerThan(std::optional<Date> date) override {
    ++loads;
    controller->libraryLoader().doGetDefaultLibraryWhenNewerThan(date);
  }
  void reloadLibraryAndScan() override { controller->scanDriver().reloadLibraryAndScan(); }
  void doFindProblems() override { controller->scanDriver().doFindProblems(); }
  void scanLibraryForProblems() override { controller->scanDriver().scanLibraryForProblems(); }
  void launchiTunesAndScanWhenReady() override {
    controller->applicationWatch().launchiTunesAndScanWhenReady();
  }
  void chooseNewMediaFolder() override { controller->chooseNewMediaFolder(); }
  void quitNow() override { controller->quitNow(); }
  void customTerminate() override { controller->customTerminate(); }

  Session session;
  SteadyHost host;
  MemoryLibrary library;
  ScriptedView view;
  std::unique_ptr<MainController> controller;
  bool ended = false;
  int loads = 0;
};

}  // namespace

TEST_F(Watch, AScanWithoutTheApplicationLaunchesItAndWaitsUntilItAnswersSteadily) {
  addTracks(3);
  session.list(false);
  iTunesInterface::resetIsMusicAppRunning();
  controller->awakeFromNib();
  const double begin = time.now().seconds;
  scanLibraryForProblems();
  EXPECT_EQ(session.launches, 1);
  EXPECT_TRUE(view.progressShown && !view.cancelEnabled);
  ASSERT_TRUE(time.runUntil([this] { return loads > 0; }));
  EXPECT_NEAR(time.now().seconds - begin, 10.0, 1.01) << "four seconds, and five of answers on end";
  ASSERT_TRUE(time.runUntil([this] { return view.scansEnded > 0; }));
  EXPECT_TRUE(logContains(u"iTunes Version: 1.0"_qs));
}

TEST_F(Watch, AnApplicationThatNeverAnswersIsGivenUpAfter24Seconds) {
  addTracks(3);
  session.list(false);
  iTunesInterface::resetIsMusicAppRunning();
  controller->awakeFromNib();
  host.failure = ScriptFailure{-609, u"gone"_qs};
  const double begin = time.now().seconds;
  scanLibraryForProblems();
  ASSERT_TRUE(time.runUntil([this] { return loads > 0; }));
  EXPECT_NEAR(time.now().seconds - begin, 25.0, 1.01);
  EXPECT_TRUE(logContains(u"Gave up waiting for iTunes"_qs));
}

TEST_F(Watch, AnApplicationThatCannotBeLaunchedIsAskedForAgainOnlyWhenTheUserScansAnew) {
  addTracks(3);
  session.list(false);
  session.canLaunch = false;
  controller->awakeFromNib();
  host.failure = ScriptFailure{-600, u"not running"_qs};
  scanLibraryForProblems();
  for (int scans = 1; scans <= 2; ++scans) {
    ASSERT_TRUE(time.runUntil([&] { return view.scansEnded == scans; }, 60.0));
    EXPECT_EQ(session.launches, scans);
    reloadLibraryAndScan();
  }
}

TEST_F(Watch, WhatWasKnownBeforeTheWatchBeganIsAskedForAgain) {
  session.list(false);
  EXPECT_FALSE(iTunesInterface::isMusicAppRunning());
  session.list(true);
  controller->awakeFromNib();
  EXPECT_TRUE(iTunesInterface::isMusicAppRunning());
}

TEST_F(Watch, AnApplicationThatHangsAtLaunchIsToldOfBeforeAnyWindowShows) {
  host.delay = 600;
  const double begin = time.now().seconds;
  controller->awakeFromNib();
  EXPECT_NEAR(time.now().seconds - begin, 8.0, 0.3);
  EXPECT_EQ(view.calls, QStringList{u"alert iTunesUnresponsiveTitle"_qs});
  EXPECT_TRUE(ended);
  time.run(600);
}

TEST_F(Watch, AQuitIsToldOnceAndTheAnswerDecides) {
  const struct {
    bool withSheet;
    int answer;
  } cases[] = {{false, 0}, {true, 0}, {false, 1}, {true, 1}};
  for (const auto &[withSheet, answer] : cases) {
    SCOPED_TRACE(testing::Message() << withSheet << answer);
    session.setRunning(true);
    ended = false;
    controller = std::make_unique<MainController>(view);
    state().commands = this;
    controller->onTerminate = [this] { ended = true; };
    controller->applicationWatch().startObservingAppChanges();
    view.calls.clear();
    view.progressShown = withSheet;
    view.answers[u"iTunesQuitAlertTitle"_qs] = answer;
    session.launches = 0;
    iTunesInterface::isMusicAppRunning();
    controller->applicationWatch().appChange(u"Other"_qs);
    EXPECT_TRUE(view.calls.isEmpty()) << "another application";
    session.setRunning(false);
    EXPECT_EQ(view.calls.filter(u"iTunesQuitAlertTitle"_qs),
              QStringList{withSheet ? u"alert iTunesQuitAlertTitle"_qs : u"sheet iTunesQuitAlertTitle"_qs});
    EXPECT_TRUE(state().operation.mCancelOperation);
    time.run(1.0);
    EXPECT_EQ(session.launches, answer == 0 ? 1 : 0);
    EXPECT_EQ(ended, answer == 1);
    EXPECT_FALSE(state().mQuitAlertShown);
  }
}

TEST_F(Watch, AnImportIsWaitedForWithoutHoldingUpTheWindows) {
  setPreference(prefs::noScanAtStartup, false);
  EXPECT_TRUE(iTunesInterface::haveDirectLibraryAccess()) << "the store stands, but is empty";
  session.activity = {LibraryActivity::State::Importing, u"library.xml"_qs, 10, 100, {}};
  controller->awakeFromNib();
  time.run(60.0);
  EXPECT_TRUE(view.progressShown && state().mMusicLibraryBusy);
  EXPECT_EQ(view.progressMaximum, 100);
  EXPECT_EQ(view.progressValue, 10);
  EXPECT_EQ(view.loadedTracks, -1) << "nothing is loaded yet";
  addTracks(3);
  session.activity = {};
  ASSERT_TRUE(time.runUntil([this] { return view.scansEnded > 0; }));
  EXPECT_EQ(view.loadedTracks, 3);
  EXPECT_GE(library.reloads, 1);
  EXPECT_FALSE(logContains(u"Can't find library XML"_qs));
}

TEST_F(Watch, AnImportThatFailedIsToldOnceWhetherItWasWaitedForOrNot) {
  setPreference(prefs::noScanAtStartup, false);
  for (const bool isWaitedFor : {true, false}) {
    view.calls.clear();
    view.scansEnded = 0;
    session.activity = {LibraryActivity::State::None, {}, 0, 0, u"line 7: damaged %1"_qs.arg(isWaitedFor)};
    const LibraryActivity failed = session.activity;
    if (isWaitedFor) session.activity = {LibraryActivity::State::Importing, u"library.xml"_qs, 0, 0, {}};
    controller->libraryLoader().doGetDefaultLibraryWhenNewerThan(std::nullopt);
    time.run(5.0);
    session.activity = failed;
    ASSERT_TRUE(time.runUntil([this] { return !state().mMusicLibraryBusy; }));
    controller->libraryLoader().doGetDefaultLibraryWhenNewerThan(std::nullopt);
    ASSERT_TRUE(time.runUntil([this] { return !state().mMusicLibraryBusy; }));
    EXPECT_EQ(view.calls.filter(u"ImportFailedTitle"_qs).size(), 1) << isWaitedFor;
    EXPECT_TRUE(logContains(failed.problem));
  }
}

TEST_F(Watch, AnImportThatNobodyTellsOfIsGivenUpAfterHalfAMinute) {
  setPreference(prefs::noScanAtStartup, false);
  session.activity = {LibraryActivity::State::Importing, u"library.xml"_qs, 0, 0, {}};
  controller->awakeFromNib();
  session.activity = {LibraryActivity::State::NoAnswer, {}, 0, 0, {}};
  time.run(29.0);
  EXPECT_TRUE(state().mMusicLibraryBusy);
  EXPECT_TRUE(time.runUntil([this] { return view.loadedTracks == 0; }, 10.0));
  EXPECT_TRUE(logContains(u"... GAVE UP waiting after"_qs));
}

TEST_F(Watch, LittleRoomIsWarnedOf) {
  const struct {
    qint64 boot, media;
    bool warns;
  } cases[] = {{0, 0, false},         {1, 0, true},         {524287999, 0, true},
               {524288000, 0, false}, {0, 524287999, true}, {524288000, 524288000, false},
               {524288000, 0, false}, {524288000, 1, true}};
  setPreference(prefs::manualMediaPath, u"/Volumes/Music/Media"_qs);
  view.answers[u"LowSpaceTitle"_qs] = 1;
  for (const auto &[boot, media, warns] : cases) {
    fileFacts->free[u"/"_qs] = boot;
    fileFacts->free[u"/Volumes/Music/Media"_qs] = media;
    EXPECT_EQ(controller->launchChecks().warnIfLowOnScratchSpace(), warns) << boot << ' ' << media;
  }
  EXPECT_FALSE(ended);
  view.answers[u"LowSpaceTitle"_qs] = 0;
  fileFacts->free[u"/"_qs] = 1;
  controller->launchChecks().warnIfLowOnScratchSpace();
  EXPECT_TRUE(ended);
}

TEST_F(Watch, AVeryLargeLibraryIsWarnedOfOnceTheUserHasEnough) {
  LaunchChecks &checks = controller->launchChecks();
  view.answers[u"LibSizeTitle"_qs] = 2;
  for (const qsizetype tracks : {299999, 300000, 300001}) checks.warnAboutTrackCount(tracks);
  EXPECT_EQ(view.calls, QStringList{u"alert LibSizeTitle"_qs});
  EXPECT_TRUE(logContains(u"!! MANY tracks (has:300000 threshold:300000)"_qs));
  EXPECT_TRUE(logContains(u" ... warning dialog disabled"_qs));
}

TEST_F(Watch, ALibraryThatCannotBeReachedIsAskedForAgain) {
  library.mediaFolder.reset();
  view.answers[u"NoLibraryTitle"_qs] = 0;
  setPreference(prefs::noScanAtStartup, false);
  controller->awakeFromNib();
  EXPECT_TRUE(view.noted("alert NoLibraryTitle"));
  time.run(0.6);
  EXPECT_EQ(loads, 1) << "the question about the media folder, due then too, takes nothing away";
  writeFile(u"home/Music/iTunes/iTunes Library.xml"_qs, QByteArray(2000, ' '));
  EXPECT_FALSE(controller->launchChecks().warnIfLibraryInaccessible());
}

TEST_F(Watch, AMediaFolderThatIsAGuessIsAskedAbout) {
  library.mediaFolder.reset();
  library.lists.emplace_back();
  view.answers[u"UntrustedMediaFolderMessage"_qs] = 2;
  controller->launchChecks().checkMediaFolder();
  time.run(1.1);
  EXPECT_EQ(view.calls, QStringList{u"alert UntrustedMediaFolderMessage"_qs});
  EXPECT_TRUE(logContains(u"showUntrustedMediaFolderAlert response = 1002"_qs));
  controller->launchChecks().checkMediaFolder();
  time.run(1.1);
  EXPECT_EQ(view.alerts.size(), 1) << "the user does not want to be reminded";
}

TEST_F(Watch, ScriptsThatTheSystemForbidsEndTheApplication) {
  host.failure = ScriptFailure{-1743, u"not permitted"_qs};
  iTunesInterface::versionString();
  state().workers.detach(u"w"_qs, [this] { state().health.checkForUnauthorizedAppleEvents(); });
  ASSERT_TRUE(time.runUntil([this] { return ended; }));
  EXPECT_EQ(view.calls.first(), u"alert UnauthorizedAppleEventsAlertMessage"_qs);
}

TEST_F(Watch, SilenceIsAskedAboutOnceTheTimeIsOver) {
  setPreference(prefs::reportMinorErrors, true);
  ApplicationHealth &health = state().health;
  health.setiTunesResponsive(true);
  host.failure = ScriptFailure{-609, u"gone"_qs};
  health.noteIfiTunesIsUnresponsiveAfterSecs(6);
  EXPECT_FALSE(view.unresponsiveWarning);
  time.run(6.5);
  health.noteIfiTunesIsUnresponsiveAfterSecs(6);
  EXPECT_TRUE(view.unresponsiveWarning);
  EXPECT_TRUE(logContains(u"iTunes became unresponsive!"_qs));
  health.setiTunesResponsive(true);
  EXPECT_FALSE(view.unresponsiveWarning);
}

TEST_F(Watch, AChangeTakesRowsThatNoLongerHoldOffTheLists) {
  const QString here = writeFile(u"music/here.mp3"_qs, "x"), gone = folder(u"music/gone.mp3"_qs);
  const struct {
    const char *what;
    ProblemTab tab;
    bool isGone;
    QString path, former;
    int orphans, missing;
  } cases[] = {{"moved", ProblemTab::Names, false, here, gone, 0, 0},
               {"no former path", ProblemTab::Names, false, here, {}, 1, 0},
               {"shown by its own table", ProblemTab::Orphans, false, here, gone, 1, 0},
               {"the other table", ProblemTab::Missing, false, here, gone, 0, 1},
               {"still missing", ProblemTab::Names, false, gone, {}, 1, 1},
               {"removed", ProblemTab::Names, true, gone, gone, 1, 0}};
  for (const auto &[what, tab, isGone, path, former, orphans, missing] : cases) {
    SCOPED_TRACE(what);
    state().lists.mOrphanSongDicts = Array::make();
    state().lists.mMissingSongDicts = Array::make();
    state().lists.mOrphanSongDicts.append(row({}, gone));
    state().lists.mMissingSongDicts.append(row(u"AB"_qs, gone));
    state().lists.mMissingSongDicts.append(row({}, {}));
    state().changes.didModifyTrackWithInfo({row(u"AB"_qs, path), tab, isGone, former});
    EXPECT_EQ(state().lists.mOrphanSongDicts.size(), orphans);
    EXPECT_EQ(state().lists.mMissingSongDicts.size(), missing + 1);
  }
  EXPECT_TRUE(state().library.mLastLibraryModifiedDate.has_value());
}

TEST_F(Watch, AMovedTrackIsWhereTheApplicationSaysAndItsOldPlaceIsNotTrusted) {
  host.path = writeFile(u"music/new.mp3"_qs, "x");
  const Dictionary track = row(u"AB"_qs, folder(u"music/old.mp3"_qs));
  state().workers.detach(u"w"_qs, [this, track] {
    state().changes.didMoveTrackWithDict(track);
    state().changes.didMoveTrackWithDict({});
    state().changes.didMoveTrackWithDict(row({}, {}));
    state().changes.didRemoveTrackWithDict({});
  });
  state().workers.joinAll();
  EXPECT_EQ(track.value(keys::Path).toText(), host.path);
  const Array untrusted = state().untrustedLocations.untrustedLocationPIDsArray();
  EXPECT_EQ(untrusted.size(), 1);
  state().changes.didRemoveTrackWithDict(track);
  EXPECT_TRUE(untrusted.isEmpty());
}

TEST_F(Watch, PlaylistsComeDirectlyOrFromAFileNewerThanTheLastChange) {
  LibraryChanges &changes = state().changes;
  library.lists.resize(2);
  EXPECT_TRUE(changes.updateJustPlaylists());
  EXPECT_EQ(changes.playlists().size(), 2);

  services.libraryFramework = nullptr;
  setPlatform(services);
  iTunesLibInterface::reset();
  EXPECT_TRUE(changes.updateJustPlaylists()) << "nothing was changed";
  const QString path = writeFile(u"home/Music/iTunes/iTunes Library.xml"_qs,
                                 "<plist version=\"1.0\"><dict><key>Playlists</key><array><dict>"
                                 "<key>Name</key><string>P</string></dict></array></dict></plist>");
  time.setNow(Date{fileFacts->modificationDate(path)->seconds + 100});
  changes.modifiedLibrary();
  const double begin = time.now().seconds;
  EXPECT_FALSE(changes.updateJustPlaylists());
  EXPECT_NEAR(time.now().seconds - begin, 40.0, 0.3);
  state().library.mLastLibraryModifiedDate = Date{fileFacts->modificationDate(path)->seconds - 1};
  time.setNow(Date{begin});
  EXPECT_TRUE(changes.updateJustPlaylists()) << "the file is newer";
  EXPECT_TRUE(logContains(u"updateJustPlaylists already current"_qs));
}
