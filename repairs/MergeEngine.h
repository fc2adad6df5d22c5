#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <optional>

#include "repairs/MergePlan.h"
#include "repairs/MergeSettings.h"
#include "support/TaskGuard.h"

struct Alert;
struct AppState;
class MergeSupervisor;
class MergeWorker;
class Operation;
class PlaylistRepair;

/// Makes one track of each marked group of duplicates. The commands and their questions, on the main thread;
/// the work itself is the `MergeWorker`'s.
class MergeEngine {
 public:
  /// All outlive it, and the workers of the state have ended before it does.
  MergeEngine(AppState &appState, Operation &currentOperation, PlaylistRepair &playlistRepair);
  ~MergeEngine();
  MergeEngine(const MergeEngine &) = delete;
  /// What is called at every tick of a run; set once while the application is put together.
  void setSupervisor(MergeSupervisor *mergeSupervisor) { supervisor = mergeSupervisor; }

  /// The command: asks what must be asked, then begins.
  void mergeMarkedDuplicates();
  /// The buttons of the warning that files go to the trash.
  void mergeTrashAccept() { beginMergeMarkedDuplicates(); }
  void mergeTrashCancel() { giveUp(); }
  /// Starts a run over the marked groups of the list, without questions.
  void beginMergeMarkedDuplicates();
  /// True until the thread of the run that began last has ended, between its steps too.
  bool isWorking() const { return !worker.expired(); }
  /// What the run that began last was begun with.
  const MergeSettings &settingsOfRun() const { return runSettings; }
  /// True if unkept files are to go to a folder and there is none, or it cannot be read.
  bool haveUnkeptFolderPathProblem() const;
  /// The policy was changed, or a merge needs its folder: asks for one if `haveUnkeptFolderPathProblem`.
  void changedMergeDupeUnkeptAction();
  /// A folder was chosen, or not (empty).
  void chooseUnkeptPanelDidEnd(const QString &folder);

 private:
  /// The command ends without a run. If it was to go on with a merge that got stuck, that merge ends here.
  void giveUp();
  /// Asks about playlists that cannot be handled well; false if the merge is not to begin.
  bool confirmPlaylists(const MergePlan &plan, qint32 longest);
  bool confirmUnknownPlaylists();
  bool confirmHugePlaylists(const QHash<QString, QString> &huge);
  bool confirmLongPlaylists(qint32 longest);
  void warnAboutTrash(const MergePlan &plan);
  /// Runs the alert in place of the progress sheet; the index of the button.
  int ask(const Alert &alert);

  /// What a run has before it.
  struct Work {
    qsizetype unkeptRows = 0;
    /// The first row of the first marked group.
    std::optional<qsizetype> firstRow;
  };
  Work workOfList() const;
  void scrollTo(const Work &work);

  AppState &state;
  Operation &operation;
  PlaylistRepair &playlists;
  MergeSupervisor *supervisor = nullptr;
  MergeSettings runSettings;
  /// Of the run that began last; its thread owns it.
  std::weak_ptr<MergeWorker> worker;
  TaskGuard tasks;
};
