#pragma once

#include <QFile>
#include <QHash>

#include "app/ApplicationWatch.h"
#include "app/state/AppState.h"
#include "app/state/Operation.h"
#include "repairs/MergeSupervisor.h"
#include "repairs/SavedState.h"
#include "scanners/DuplicateGroups.h"
#include "tests/bridge/ScriptedHost.h"
#include "tests/fixtures/IdleCommands.h"
#include "tests/fixtures/RecordingWorkspace.h"
#include "tests/fixtures/ScriptedView.h"
#include "tests/fixtures/TestPlatform.h"
#include "values/Keys.h"

/// The supervisor with its saved state, a music application that answers every script with nothing, and a
/// worker that does what the test says.
class Supervision : public TestPlatform, public IdleCommands {
 protected:
  Supervision()
      : state(view),
        operation(state),
        groups(state),
        saved(state, groups),
        watch(state, operation),
        supervisor({state, operation, saved, groups, watch, [this] { command(); }, [this] { begin(); },
                    [this] { return isWorking; }, [this] { return settings; },
                    [this](const QString &text) { return brokenDetails.value(text); }}) {
    services.scriptHost = &host;
    workspace->running = {RecordingWorkspace::musicApplication()};
    setPlatform(services);
    state.commands = this;
    supervisor.endProcess = [this](int code) {
      exitCode = code;
      operation.stopTimer();
    };
    saved.applicationPath = u"/bin/true"_qs;
    saved.toolPath = folder(u"relaunch"_qs);
    saved.applicationWillTerminate = [this] { ++terminations; };
    // Three groups of two rows.
    for (int row = 0; row < 6; ++row) addRow(1 + row / 2, u"%1"_qs.arg(row));
  }
  ~Supervision() override { state.endAllWork(); }

  void addRow(qint64 group, const QString &pid) {
    const Dictionary row = Dictionary::make();
    row.set(keys::PersistentID, pid);
    row.set(keys::DupeGroup, group);
    state.lists.mDuplicateSongDicts.append(row);
  }
  QString listedPIDs() const {
    QString pids;
    for (const Value &row : state.lists.mDuplicateSongDicts)
      pids += row.toDictionary().value(keys::PersistentID).toText();
    return pids;
  }
  /// A tool that stays for a moment.
  void putTool() {
    QFile::setPermissions(
        writeFile(saved.toolPath, "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.told\"\nsleep 1\n"),
        QFile::ReadOwner | QFile::ExeOwner);
  }
  /// A run whose worker is in the step of that number.
  void begin() {
    ++begins;
    operation.reserve();
    state.operation.mLastCompletedCount = 0;
    state.merge.lastProgress = time.now();
    OperationPlan plan;
    plan.maximum = 1000;
    plan.tickSeconds = 0.5;
    plan.update = [this] { supervisor.updateMergeMarkedDuplicatesProgress(); };
    operation.start(plan);
  }
  void begin(qint32 action) {
    begin();
    state.operation.mCurrentThreadAction = action;
  }
  void command() {
    ++commands;
    state.merge.mGoesOnAfterStall = false;
    operation.reserve();
  }
  /// The step ends after so many seconds, by a worker that goes to the main thread before.
  void endStepAfter(double seconds) {
    state.workers.detach(u"step"_qs, [this, seconds] {
      time.sleep(seconds);
      time.postAndWait([this] { ++hops; });
      state.operation.mCurrentThreadAction = 0;
    });
  }
  bool ranScriptWith(const QString &text) const { return !host.scripts().filter(text).isEmpty(); }

  ScriptedHost host;
  ScriptedView view;
  AppState state;
  Operation operation;
  DuplicateGroups groups;
  SavedState saved;
  ApplicationWatch watch;
  MergeSupervisor supervisor;
  QHash<QString, Dictionary> brokenDetails;
  MergeSettings settings;
  bool isWorking = false;
  int begins = 0, commands = 0, terminations = 0, hops = 0, exitCode = -1;
};
