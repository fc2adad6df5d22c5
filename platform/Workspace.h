#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

/// An application that runs in the user's session.
struct RunningApplication {
  QString bundleIdentifier;
  QString name;
};

/// What keeps the music application's library from being whole for a while.
struct LibraryActivity {
  enum class State { None, Importing, NoAnswer };
  State state = State::None;
  /// The file that is being imported.
  QString file;
  /// Tracks taken in so far, and in all; 0 while that is unknown.
  qint64 done = 0;
  qint64 total = 0;
  /// Why the import that the application began with came to nothing; empty if it did not.
  QString problem{};
};

/// The user's session and its applications. Any thread.
class Workspace {
 public:
  virtual ~Workspace() = default;
  /// The name a user sees for the application at a path; empty if there is none.
  virtual QString displayNameOfApplication(const QString &path) const = 0;
  /// The system's name and version in one line, for the log.
  virtual QString systemDescription() const = 0;
  /// Moves a file, a folder with all it holds, or a link (not what it leads to) into the user's trash, whence
  /// the desktop can bring it back. Where only copying can do that the call takes its time. False if
  /// something of it still stands where it was, as a rule all; `error` (may be null) says in one line what,
  /// where and why. At every instant, a kill included, one of the two places holds all of it. Any thread, but
  /// one call for one path at a time.
  [[nodiscard]] virtual bool recycle(const QString &path, QString *error) = 0;
  /// The folders of the user's trash whose names do not begin with ".Trash" themselves; absolute, without a
  /// slash at the end, whether they stand yet or not. Costs nothing.
  virtual QStringList trashFolders() const = 0;

  /// The applications that run now, as far as this system has to do with them. Cheap.
  virtual std::vector<RunningApplication> runningApplications() const = 0;
  /// Starts an application in the background, or leaves one alone that runs already. Does not wait until it
  /// answers. False if it cannot be started.
  virtual bool launchApplication(const QString &identifier) = 0;
  /// What the running music application does with its library as a whole; nothing if it does not run. Waits a
  /// quarter of a second for the answer.
  virtual LibraryActivity libraryActivity() const { return {}; }
  /// From now on tells, on the main thread, of every application that launched or ended; 0 is no
  /// subscription. Main thread.
  using Subscription = quint64;
  virtual Subscription observeApplications(std::function<void(const RunningApplication &)> launched,
                                           std::function<void(const RunningApplication &)> terminated) = 0;
  /// Ends a subscription; an ended or unknown one is ignored. Main thread.
  virtual void stopObserving(Subscription subscription) = 0;
};
