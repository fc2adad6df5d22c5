#pragma once

#include <functional>

#include "platform/MainLoop.h"
#include "platform/Workspace.h"

struct AppState;
class Operation;

/// The wait for a music application that is taking its library in, as at its very first start: direct access
/// has nothing to show until that is done. The progress sheet tells how far it is, and the main loop goes on,
/// so that the user may quit. Main thread.
class ImportWait {
 public:
  ImportWait(AppState &appState, Operation &currentOperation)
      : state(appState), operation(currentOperation) {}
  ImportWait(const ImportWait &) = delete;
  ~ImportWait();

  /// False if nothing has to be waited for. Else `done` is called once: when the library is whole, or when
  /// the application has given no answer for half a minute. Until then `mMusicLibraryBusy` is set. The user is
  /// told, once, if the application could not take its library in.
  [[nodiscard]] bool begin(std::function<void()> done);
  bool isWaiting() const { return timer != 0; }

 private:
  void look();
  void show(const LibraryActivity &activity);
  void tellProblem(const QString &problem);

  AppState &state;
  Operation &operation;
  std::function<void()> whenDone;
  MainLoop::TimerID timer = 0;
  double begun = 0.0;
  double lastAnswer = 0.0;
  QString toldProblem;
};
