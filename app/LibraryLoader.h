#pragma once

#include <QHash>
#include <QString>
#include <array>
#include <optional>

#include "app/library/LibraryPreparation.h"
#include "support/TaskGuard.h"
#include "values/Date.h"

struct AppState;
class Operation;
class PrefsController;

/// Brings the library into memory: asks for a fresh file, reads it on a thread of its own, and goes on to the
/// scan. Main thread, unless said otherwise.
class LibraryLoader {
 public:
  LibraryLoader(AppState &appState, Operation &currentOperation, PrefsController &prefsController);

  /// Has the music application write its library, shows the progress sheet and loads. With a date and without
  /// direct access it first waits, up to 120 seconds, for a file more than half a second newer than that.
  /// Nothing happens while a load is under way or the application is ending.
  void doGetDefaultLibraryWhenNewerThan(std::optional<Date> date);
  /// Starts the load of the library file; an empty path stands for the one that the search finds.
  void getLibraryAtPath(const QString &path);
  /// The modification date of the library file; the present time with direct access.
  std::optional<Date> currentMusicLibraryDate() const;
  /// Shows the library's folder and the media folder in the preferences.
  void updateLibraryPrefsDisplay();

  /// The tracks of the last load by verdict.
  const std::array<qsizetype, TrackFilter::kVerdictCount> &lastVerdicts() const { return verdicts; }

 private:
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
  std::array<qsizetype, TrackFilter::kVerdictCount> verdicts{};
  TaskGuard tasks;
};
