#pragma once

#include <QHash>
#include <QString>
#include <array>
#include <optional>

#include "app/ImportWait.h"
#include "app/library/LibraryPreparation.h"
#include "support/TaskGuard.h"
#include "values/Date.h"

struct AppState;
class LaunchChecks;
class Operation;
class PrefsController;

/// Brings the library into memory: asks for a fresh file, reads it on a thread of its own, and goes on to the
/// scan. Main thread, unless said otherwise.
class LibraryLoader {
 public:
  LibraryLoader(AppState &appState, Operation &currentOperation, PrefsController &prefsController,
                LaunchChecks &launchChecks);

  /// Has the music application write its library, shows the progress sheet and loads. A music application
  /// that is still taking its library in is waited for, without holding up the main loop. With a date and
  /// without direct access it then waits, up to 120 seconds, for a file more than half a second newer than
  /// that. Nothing happens while a load is under way or the application is ending.
  void doGetDefaultLibraryWhenNewerThan(std::optional<Date> date);
  /// Runs the task now, or once the music application has taken its library in. One at a time.
  void whenLibraryIsWhole(std::function<void()> task);
  /// Starts the load of the library file; an empty path stands for the one that the search finds.
  void getLibraryAtPath(const QString &path);
  /// The modification date of the library file; the present time with direct access.
  std::optional<Date> currentMusicLibraryDate() const;
  /// Shows the library's folder and the media folder in the preferences.
  void updateLibraryPrefsDisplay();

  /// The tracks of the last load by verdict.
  const std::array<qsizetype, TrackFilter::kVerdictCount> &lastVerdicts() const { return verdicts; }

 private:
  void loadWhenNewerThan(std::optional<Date> date);
  void waitForLibraryNewerThan(Date date);
  /// What the load's thread hands to the main thread.
  struct Loaded {
    Dictionary library = Dictionary::make();
    PreparedLibrary prepared;
    std::optional<Date> date;
    bool succeeded = false;
  };
  /// The load's own thread: reads, prepares, and sends the result on.
  void getLibraryThreaded(const QString &path, const QHash<QString, QString> &overridePaths);
  Loaded loadGuarded(const QString &path, const QHash<QString, QString> &overridePaths);
  Loaded readLibrary(const QString &path, const QHash<QString, QString> &overridePaths);
  void sendLibraryError(const QString &detail);
  void gotLibraryError(const QString &detail);
  void finishedGettingLibrary(const Loaded &loaded);

  AppState &state;
  Operation &operation;
  PrefsController &prefsOwner;
  LaunchChecks &checks;
  ImportWait importWait;
  std::function<void()> waiting;
  std::array<qsizetype, TrackFilter::kVerdictCount> verdicts{};
  TaskGuard tasks;
};
