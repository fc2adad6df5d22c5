#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "app/state/ProgressSheet.h"
#include "platform/MainLoop.h"

struct AppState;

/// What one kind of long operation gives to the common pattern.
struct OperationPlan {
  /// One background thread: its name and its body, which ends by setting its completion flag.
  struct Worker {
    QString name;
    std::function<void()> body;
  };

  QString text;
  QString quote;
  /// The indicator's full value.
  double maximum = 0.0;
  double tickSeconds = 0.25;
  /// The update method: once by hand before the sheet appears, then at every tick.
  std::function<void()> update;
  /// Called behind the first update, just before the sheet appears.
  std::function<void()> beforeSheet;
  /// Called when all is set, just before the workers start.
  std::function<void()> beforeWorkers;
  std::vector<Worker> workers;
};

/// The one pattern of long operations: begin on the main thread, workers, a repeating timer whose update
/// method ends the operation. Main thread.
class Operation {
 public:
  explicit Operation(AppState &appState) : state(appState), sheet(appState) {}
  Operation(const Operation &) = delete;
  ~Operation();

  /// True while an operation runs or holds the busy flag, a preference so that it survives a crash. A reset
  /// of the settings takes the flag away, not the operation.
  bool isBusy() const;
  /// Takes the busy flag and clears all flags, counters, the reason and the failed items of the one before.
  void reserve();
  /// Gives the busy flag back before anything was started.
  void abandon();
  /// Shows the texts and the sheet, starts the timer and last the workers. Behind `reserve`.
  void start(const OperationPlan &plan);
  /// Ends the operation: gives the busy flag back and stops the timer. The sheet stays.
  void finish();

  /// Stops the updates of an operation that was interrupted from outside: its sheet and the busy flag stay.
  void stopTimer();

  /// The indicator's full value, as the operation that began last has it.
  double maximum() const { return mMaximum; }
  ProgressSheet &progressSheet() { return sheet; }

 private:
  AppState &state;
  ProgressSheet sheet;
  MainLoop::TimerID mUpdateProgressTimer = 0;
  double mMaximum = 0.0;
};
