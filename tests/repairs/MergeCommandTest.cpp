#include "app/ApplicationWatch.h"
#include "bridge/iTunesInterface.h"
#include "repairs/MergeSupervisor.h"
#include "repairs/SavedState.h"
#include "support/Preferences.h"
#include "tests/fixtures/MergeWorld.h"

namespace {

/// The command with its questions, and its runs watched as in the application.
class MergeCommands : public MergeWorld {
 protected:
  MergeCommands()
      : saved(state, groups),
        watch(state, operation),
        supervisor({state, operation, saved, groups, watch, [this] { engine.mergeMarkedDuplicates(); },
                    [this] { engine.beginMergeMarkedDuplicates(); }, [this] { return engine.isWorking(); },
                    [this] { return engine.settingsOfRun(); },
                    [](const QString &) { return Dictionary(); }}) {
    engine.setSupervisor(&supervisor);
    supervisor.endProcess = [this](int) { ADD_FAILURE() << logText().toStdString(); };
  }
  void addGroup(qint64 group) {
    addSong(group);
    addSong(group);
  }
  void addLongPlaylist() {
    const QString pid = addSong(99);
    keeper.addPlaylist(u"Long"_qs, QStringList(751, pid));
  }
  void setPolicy(UnkeptPolicy policy) { setPreference(prefs::unkeptActionPolicy, int(policy)); }
  void runToItsEnd() {
    time.run(0.1);
    EXPECT_TRUE(time.runUntil([this] { return !operation.isBusy() && state.workers.running() == 0; }));
    time.run(1);
  }

  SavedState saved;
  ApplicationWatch watch;
  MergeSupervisor supervisor;
};

}  // namespace

TEST_F(MergeCommands, AnyRefusalEndsTheCommandAndTheEndOfAMergeThatWentBeforeIsToldOnce) {
  enum class Question { Long, Trash, Folder };
  const struct {
    Question question;
    /// A run before the command got stuck: the merge goes on with it.
    bool goesOn, isAgreedTo;
  } cases[] = {
      {Question::Long, false, false},  {Question::Long, true, false},  {Question::Trash, false, false},
      {Question::Trash, true, false},  {Question::Trash, true, true},  {Question::Folder, false, false},
      {Question::Folder, true, false}, {Question::Folder, true, true}, {Question::Trash, false, true}};
  addLongPlaylist();
  qint64 group = 0;
  for (const auto &each : cases) {
    SCOPED_TRACE(testing::Message() << int(each.question) << each.goesOn << each.isAgreedTo);
    addGroup(++group);
    scan();
    setPolicy(each.question == Question::Folder ? UnkeptPolicy::Folder : UnkeptPolicy::Trash);
    setPreference(prefs::noWarnBigPlaylists, each.question != Question::Long);
    setPreference(prefs::noWarnAboutUnkeptTrash, false);
    setPreference(prefs::unkeptPath, folder(u"nowhere"_qs));
    view.answers = {{u"PlaylistSizeWarningTitle"_qs, 0},
                    {u"MergeTrashWarningTitle"_qs, each.isAgreedTo ? 0 : 1}};
    view.chosenFolder = each.isAgreedTo ? folder(u"music"_qs) : QString();
    view.calls.clear();
    view.mergesEnded = 0;
    state.merge.report.clear();
    state.merge.report.addFailure({u"before"_qs, {}, {}});
    state.merge.mGoesOnAfterStall = each.goesOn;
    engine.mergeMarkedDuplicates();
    runToItsEnd();
    EXPECT_EQ(view.mergesEnded, each.goesOn || each.isAgreedTo ? 1 : 0);
    EXPECT_EQ(report().groups.size() > 0, each.isAgreedTo);
    EXPECT_EQ(tracksOfGroup(group).size(), each.isAgreedTo ? 1 : 2);
    EXPECT_TRUE(!each.goesOn || report().failures.size() == 1) << "what went before is forgotten";
    EXPECT_EQ(view.noted("sheet MergeTrashWarningTitle"), each.question == Question::Trash);
    EXPECT_TRUE(view.cancelEnabled && !view.progressShown);
    EXPECT_FALSE(state.merge.mGoesOnAfterStall);
  }
  EXPECT_EQ(prefs::text(prefs::unkeptPath), folder(u"nowhere"_qs));
}

TEST_F(MergeCommands, AScriptThatTakesTooLongHasTheCommandAskAgainAndARefusalThenIsTheEnd) {
  addGroup(1);
  addGroup(2);
  const Holdings before = holdings();
  scan();
  setPreference(prefs::noWarnAboutUnkeptTrash, false);
  keeper.intercept = [this](const QString &source) -> std::optional<ScriptOutcome> {
    if (!source.contains(u"mergePlayed(\""_qs)) return std::nullopt;
    while (!state.operation.mCancelOperation) time.sleep(0.1);
    return ScriptOutcome{ScriptDescriptor::ofText(u"error: late"_qs), {}};
  };
  time.setPatience(0.001);
  engine.mergeMarkedDuplicates();
  EXPECT_GT(view.progressValue, 0) << "a bar with nothing in it looks broken";
  EXPECT_FALSE(view.progressIndeterminate);
  time.run(140.2);
  // The worker gives in, and is given the time to come to its end.
  time.setPatience(0.2);
  ASSERT_TRUE(time.runUntil([this] { return state.merge.mGoesOnAfterStall; }, 60));
  EXPECT_EQ(view.mergesEnded, 0);
  EXPECT_EQ(keeper.quits, 1);
  view.answers = {{u"MergeTrashWarningTitle"_qs, 1}};
  runToItsEnd();
  EXPECT_EQ(view.calls.count(u"sheet MergeTrashWarningTitle"_qs), 2);
  EXPECT_EQ(view.mergesEnded, 1);
  expectNothingLost(before);
}

TEST_F(MergeCommands, PlaylistsThatNobodyCanTellAreToldOfBeforeAnythingBegins) {
  addGroup(1);
  keeper.addPlaylist(u"L"_qs, {tracksOfGroup(1)});
  scan();
  const auto asks = [this] {
    view.calls.clear();
    engine.mergeMarkedDuplicates();
    EXPECT_EQ(view.alerts.isEmpty() ? -1 : view.alerts.last().safeButton, 0);
    return view.noted("alert PlaylistsUnknownTitle");
  };
  // A script has hung, and direct access is left alone for it.
  state.merge.mScriptLockedBeforeRestart = true;
  state.merge.mNumberOfNoProgressRestarts = 1;
  EXPECT_TRUE(asks());
  state.merge.mNumberOfNoProgressRestarts = 0;
  services.libraryFramework = nullptr;
  setPlatform(services);
  iTunesLibInterface::reset();
  EXPECT_TRUE(asks());
  EXPECT_EQ(state.workers.running(), 0);
}
