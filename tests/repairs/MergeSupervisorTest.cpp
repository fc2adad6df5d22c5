#include "bridge/iTunesInterface.h"
#include "support/Preferences.h"
#include "tests/repairs/SupervisionFixture.h"

namespace {

class MergeSupervision : public Supervision {};

}  // namespace

TEST_F(MergeSupervision, WhatEndsARunAndHow) {
  enum class Event { Cancel, Silence };
  constexpr double kNever = -1;
  struct Case {
    const char *what;
    Event event;
    bool inStep;
    /// Seconds behind the cancel, or behind the beginning of a stall.
    double stepEnds;
    bool hasTool;
    int earlierRestarts;
    // What comes of it.
    const char *alert;
    int exitCode, launches, commands, ends;
    bool stateIsWritten;
  };
  const Case cases[] = {
      {"cancel between steps", Event::Cancel, false, kNever, true, 0, "", -1, 0, 0, 1, false},
      {"cancel, the step ends", Event::Cancel, true, 9.2, true, 0, "", -1, 0, 0, 1, false},
      {"cancel, the step hangs", Event::Cancel, true, kNever, true, 0, "CancelMergeTimeoutTitle", 1, 0, 0, 0,
       false},
      {"stall, the worker gives in", Event::Silence, true, 0.4, true, 0, "", -1, 1, 1, 0, false},
      {"stall, the worker hangs", Event::Silence, true, kNever, true, 0, "", 0, 1, 0, 0, true},
      {"stall without a tool", Event::Silence, true, kNever, false, 0, "MergeTimeoutTitle", 1, 0, 0, 0, true},
      {"stall for the fifth time", Event::Silence, true, kNever, true, 4, "MergeTimeoutTitle", 1, 0, 0, 0,
       false}};
  time.setPatience(0.002);
  for (const Case &each : cases) {
    SCOPED_TRACE(each.what);
    QFile::remove(SavedState::statePath());
    QFile::remove(saved.toolPath);
    if (each.hasTool) putTool();
    view.calls.clear();
    view.mergesEnded = 0;
    view.cancelEnabled = true;
    exitCode = -1;
    workspace->launches = commands = 0;
    state.merge.mNumberOfNoProgressRestarts = each.earlierRestarts;
    begin(each.inStep ? 2 : 0);
    if (each.event == Event::Cancel) {
      time.run(3);
      state.operation.mCancelOperation = true;
    } else {
      time.run(140);
      EXPECT_FALSE(state.operation.mCancelOperation);
    }
    // The next tick is half a second away.
    if (each.stepEnds != kNever) endStepAfter(0.5 + each.stepEnds);
    time.run(1);
    // The tick takes its time; a command may follow it.
    time.run(0.6);
    EXPECT_EQ(exitCode, each.exitCode);
    EXPECT_EQ(workspace->launches, each.launches);
    EXPECT_EQ(commands, each.commands);
    EXPECT_EQ(view.mergesEnded, each.ends);
    EXPECT_EQ(saved.readStateExists(), each.stateIsWritten);
    const QStringList alerts = view.calls.filter(u"Title"_qs);
    EXPECT_EQ(alerts.join(u','), each.alert[0] ? u"alert "_qs + QString::fromUtf8(each.alert) : QString());
    EXPECT_EQ(exitCode == -1, !view.progressShown);
    EXPECT_TRUE(view.cancelEnabled || exitCode == 1);
    operation.finish();
    operation.progressSheet().endProgressSheetImmediately();
    state.operation.mCurrentThreadAction = 0;
  }
  EXPECT_EQ(hops, 2) << "a worker was left waiting for the main thread";
  EXPECT_TRUE(ranScriptWith(u"to quit"_qs));
  EXPECT_TRUE(ranScriptWith(u"ZZZ_TF"_qs));
  EXPECT_TRUE(logContains(u"Merge duplicates timeout (140.5 > 140.0), cancelling ..."_qs));
}

TEST_F(MergeSupervision, AFrozenApplicationHoldsTheEndUpNoLongerThanItIsAsked) {
  time.setPatience(0.002);
  putTool();
  for (const bool isInStep : {false, true}) {
    // The worker's script, and the one that is to quit the application.
    if (isInStep) host.answerAfter(1e5, u"late"_qs);
    host.answerAfter(1e5, u"late"_qs);
    begin(isInStep ? 3 : 0);
    if (isInStep) state.workers.detach(u"step"_qs, [] { iTunesInterface::stringFromScript(u"hang"_qs); });
    // The silence itself is asked about, by the application's version.
    state.health.setiTunesResponsive(true);
    time.run(140);
    const double stall = time.now().seconds;
    time.run(0.5);
    EXPECT_LT(time.now().seconds - stall, 21);
    EXPECT_EQ(exitCode, isInStep ? 0 : -1);
    EXPECT_TRUE(host.scripts().last().contains(u"to quit"_qs)) << qPrintable(host.scripts().join(u'\n'));
    operation.finish();
  }
  EXPECT_EQ(workspace->launches, 2);
}

TEST_F(MergeSupervision, AStallTriesTheGroupOnTopLastUnlessTheUserDoesSomethingElse) {
  enum class User { Waits, Scans, MergesHimself, HasASheet };
  const struct {
    User user;
    int commands, ends;
  } cases[] = {
      {User::Waits, 1, 0}, {User::Scans, 0, 1}, {User::MergesHimself, 1, 0}, {User::HasASheet, 1, 0}};
  for (const auto &each : cases) {
    const int user = int(each.user);
    const QString first = listedPIDs().left(2);
    commands = view.mergesEnded = 0;
    begin();
    ASSERT_TRUE(time.runUntil([this] { return state.merge.mGoesOnAfterStall; }, 150)) << user;
    EXPECT_EQ(listedPIDs().right(2), first) << user;
    if (each.user == User::Scans) operation.reserve();
    if (each.user == User::MergesHimself) command();
    view.otherSheet = each.user == User::HasASheet;
    time.run(2);
    EXPECT_EQ(commands, view.otherSheet ? 0 : each.commands) << user;
    view.otherSheet = false;
    time.run(1);
    EXPECT_EQ(commands, each.commands) << user;
    EXPECT_EQ(view.mergesEnded, each.ends) << user;
    EXPECT_FALSE(state.merge.mGoesOnAfterStall) << user;
    operation.finish();
  }
}

TEST_F(MergeSupervision, AFinishedRowRestartsTheClockAndShows) {
  begin(4);
  time.run(100);
  state.operation.mNumberOfCompletedItems = 3;
  const int reloads = view.reloads[0];
  time.run(139.5);
  EXPECT_EQ(view.reloads[0], reloads + 1);
  EXPECT_EQ(view.progressValue, 10) << "a bar with so little in it looks empty";
  state.merge.mNumberCompletedBeforeRestart = 40;
  time.run(0.5);
  EXPECT_EQ(view.progressValue, 43);
  EXPECT_FALSE(state.operation.mCancelOperation);
  // Progress and the end together: both are told.
  state.operation.mNumberOfCompletedItems = 4;
  state.operation.mCurrentThreadAction = 0;
  state.operation.mCompletedOperation = true;
  time.run(0.5);
  EXPECT_EQ(state.operation.mLastCompletedCount, 4);
  EXPECT_EQ(view.mergesEnded, 1);
  EXPECT_TRUE(view.calls.filter(u"Title"_qs).isEmpty());
  EXPECT_FALSE(prefs::isTrue(prefs::busy));
}

TEST_F(MergeSupervision, TitleAndStepAreShownAndASilenceIsAskedAboutLaterInPlaylists) {
  begin(3);
  state.operation.setCurrentActionTitle(u"Abba \"Waterloo\""_qs);
  const auto questions = [this] { return host.scripts().filter(u"version"_qs).size(); };
  time.run(0.5);
  EXPECT_EQ(view.progressText, u"Abba \"Waterloo\""_qs);
  EXPECT_EQ(view.subTexts, QStringList{u"Taking its places in your playlists…"_qs});
  const qsizetype before = questions();
  time.run(49.5);
  EXPECT_EQ(questions(), before);
  time.run(1);
  EXPECT_EQ(questions(), before + 1);
  state.operation.mCurrentThreadAction = 1;
  time.run(20);
  EXPECT_EQ(questions(), before + 1);
  time.run(1.5);
  EXPECT_EQ(questions(), before + 2);
}

TEST_F(MergeSupervision, EachReasonHasItsReaction) {
  Dictionary broken = Dictionary::make();
  const Array names = Array::make(), songs = Array::make(), tracks = Array::make();
  names.append(u"Best of"_qs);
  for (int i = 1; i <= 11; ++i) {
    songs.append(u"Song %1"_qs.arg(i));
    const Dictionary track = Dictionary::make();
    track.set(keys::PersistentID, u"T%1"_qs.arg(i % 4));
    tracks.append(track);
  }
  broken.set(keys::playlists, names);
  broken.set(keys::tracksummaries, songs);
  broken.set(keys::tracks, tracks);
  brokenDetails.insert(u"broken:|@Best of|@T1"_qs, broken);
  // The sheet with a part of its message, and what the report tells besides the sheet's title.
  const struct {
    const char *reason;
    bool tracksAreMissing;
    const char *sheet, *message, *path, *told;
    int begins, numberUpdates;
  } cases[] = {{"missingError:/M/a", false, "MergeMissingErrorTitle", "/M/a\n", "/M/a", "", 1, 1},
               {"missingError:(null)", false, "MergeMissingErrorTitle", "(null)", "", "", 1, 1},
               {"deleteError:/M/a", false, "MergeDeleteErrorTitle", "/M/a\n", "/M/a", "", 1, 1},
               {"error: no 5%", false, "PlaylistOtherErrorTitle", "error: no 5%", "", ": error: no 5%", 1, 1},
               {"error: folder: full", false, "MergeFolderErrorTitle", "\nfull\n", "", ": full", 1, 1},
               {"trashErrors", false, "PlaylistOtherErrorTitle", "trashErrors", "", ": trashErrors", 1, 1},
               {"trashError", false, "TrashFailureTitle", "No file was deleted", "", "", 1, 0},
               {"missingError: timed out", false, "", "", "", "", 2, 0},
               {"broken: timed out", false, "PlaylistBrokenSongsUnknownTitle", "Unknown\n", "", "", 1, 1},
               {"broken:|@Best of|@T1", false, "PlaylistBrokenSongsUnknownTitle", "Song 9\n...", "",
                ": Best of, Song 1, Song 2", 1, 1},
               {"broken:|@Best of|@T1", true, "MergeFailWithMissingFilesTitle", "missing", "",
                ": Best of, Song 1", 1, 1},
               {"error: timed out", true, "MergeFailWithMissingFilesTitle", "missing", "",
                ": error: timed out", 1, 1}};
  for (const auto &each : cases) {
    SCOPED_TRACE(each.reason);
    view.calls.clear();
    view.alerts.clear();
    view.mergesEnded = begins = numberUpdates = 0;
    state.merge.mNumberCompletedBeforeRestart = 5;
    state.lists.mMissingSongDicts = Array::make();
    if (each.tracksAreMissing) state.lists.mMissingSongDicts.append(Dictionary::make());
    begin();
    // A worker that is cancelled in its last group counts as one that has finished.
    state.operation.setCancelOperationReason(QString::fromUtf8(each.reason));
    state.operation.setCurrentActionTitle(u"The group"_qs);
    state.operation.mCompletedOperation = true;
    state.merge.report.clear();
    time.run(0.5);
    const bool retries = each.begins == 2;
    EXPECT_EQ(begins, each.begins);
    EXPECT_EQ(view.mergesEnded, retries ? 0 : 1);
    EXPECT_EQ(numberUpdates, each.numberUpdates);
    EXPECT_EQ(state.operation.cancelOperationReason(), QString());
    EXPECT_EQ(view.calls.filter(u"Title"_qs).join(u','),
              retries ? QString() : u"sheet "_qs + QString::fromUtf8(each.sheet));
    if (!view.alerts.isEmpty()) {
      const QString message = view.alerts.first().message;
      EXPECT_TRUE(message.contains(QString::fromUtf8(each.message))) << message.toStdString();
    }
    const std::vector<MergeFailure> failures = state.merge.report.contents().failures;
    ASSERT_EQ(failures.size(), retries ? 0u : 1u);
    for (const MergeFailure &failure : failures) {
      EXPECT_EQ(failure.title, u"The group"_qs);
      EXPECT_EQ(failure.path, QString::fromUtf8(each.path));
      EXPECT_TRUE(failure.reason.startsWith(view.alerts.first().title + QString::fromUtf8(each.told)))
          << failure.reason.toStdString();
    }
    operation.finish();
  }
  const Array untrusted = state.untrustedLocations.untrustedLocationPIDsArray();
  EXPECT_EQ(untrusted.size(), 4) << "a track was noted twice, or not at all";
}

TEST_F(MergeSupervision, ARetryCarriesItsCountOn) {
  begin(3);
  state.operation.mNumberOfCompletedItems = 7;
  state.merge.mNumberCompletedBeforeRestart = 10;
  state.operation.setCancelOperationReason(u"error: timed out"_qs);
  state.operation.mCurrentThreadAction = 0;
  time.run(0.5);
  EXPECT_EQ(state.merge.mNumberCompletedBeforeRestart, 17);
  EXPECT_EQ(state.operation.mNumberOfCompletedItems, 0);
  EXPECT_TRUE(view.progressShown);
}

TEST_F(MergeSupervision, CollectedDuplicatesAreToldOfBehindTheReason) {
  // What counts is what the run was begun with.
  settings.policy = int(UnkeptPolicy::Playlist);
  begin();
  state.operation.mNumberOfCompletedItems = 1;
  state.operation.setCancelOperationReason(u"error: unknown"_qs);
  time.run(0.5);
  EXPECT_EQ(view.calls.filter(u"Title"_qs),
            (QStringList{u"sheet PlaylistOtherErrorTitle"_qs, u"sheet UnkeptNotDeletedTitle"_qs}));
  EXPECT_FALSE(view.alerts.last().critical);
  EXPECT_EQ(view.mergesEnded, 1);
}

TEST_F(MergeSupervision, ARunDoesNotEndBeforeItsThread) {
  begin();
  isWorking = true;
  state.operation.mCancelOperation = true;
  time.run(30);
  EXPECT_TRUE(view.progressShown);
  EXPECT_TRUE(operation.isBusy());
  isWorking = false;
  time.run(0.5);
  EXPECT_EQ(view.mergesEnded, 1);
  EXPECT_FALSE(operation.isBusy());
  // One that never ends takes the process with it, but not while it counts the library.
  begin();
  isWorking = true;
  for (int minute = 0; minute < 8; ++minute) {
    ++state.merge.countingSteps;
    time.run(55);
    EXPECT_EQ(state.operation.mCancelOperation, minute > 3);
    if (minute == 3) state.operation.mCancelOperation = true;
  }
  EXPECT_EQ(exitCode, -1);
  time.run(8);
  EXPECT_EQ(exitCode, 1);
  EXPECT_EQ(terminations, 1);
}
