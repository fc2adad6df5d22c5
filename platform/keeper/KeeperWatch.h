#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>

#include "platform/keeper/KeeperPlace.h"
#include "platform/keeper/ProcessHandle.h"

/// Tells when a keeper begins to run and when it has ended, by its lock: promptly, without asking all the
/// time. Main thread.
class KeeperWatch : public QObject {
 public:
  /// What runs now is known, and not told.
  KeeperWatch(KeeperPlace place, std::function<void(bool isRunning)> changed);

 private:
  void look();
  void followHolder(qint64 processID);

  const KeeperPlace place;
  const std::function<void(bool)> changed;
  QFileSystemWatcher files;
  QTimer timer;
  std::unique_ptr<ProcessHandle> process;
  std::unique_ptr<QSocketNotifier> end;
  qint64 holder = 0;
  bool running = false;
};
