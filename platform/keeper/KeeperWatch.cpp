#include "platform/keeper/KeeperWatch.h"

#include <QFileInfo>

#include "platform/keeper/KeeperLock.h"

KeeperWatch::KeeperWatch(KeeperPlace place_, std::function<void(bool)> changed_)
    : place(std::move(place_)), changed(std::move(changed_)) {
  // Only what stands can be watched.
  (void)place.prepare(nullptr);
  files.addPath(place.folder);
  connect(&files, &QFileSystemWatcher::directoryChanged, this, [this] { look(); });
  connect(&files, &QFileSystemWatcher::fileChanged, this, [this] { look(); });
  // Where the system tells nothing of files or of the process, a look a second has to do.
  timer.setInterval(1000);
  connect(&timer, &QTimer::timeout, this, [this] { look(); });
  running = KeeperLock::holder(place.lock()).has_value();
  look();
}

void KeeperWatch::look() {
  if (QFileInfo::exists(place.lock())) files.addPath(place.lock());
  const std::optional<qint64> now = KeeperLock::holder(place.lock());
  if (!now) {
    end.reset();
    process.reset();
    holder = 0;
  } else if (*now != holder || !process) {
    followHolder(*now);
  }
  const bool isWatched = now ? end != nullptr : files.directories().contains(place.folder);
  isWatched ? timer.stop() : timer.start();
  if (now.has_value() == running) return;
  running = now.has_value();
  changed(running);
}

void KeeperWatch::followHolder(qint64 processID) {
  holder = processID;
  end.reset();
  process = std::make_unique<ProcessHandle>(processID);
  if (process->descriptor() < 0) return;
  end = std::make_unique<QSocketNotifier>(process->descriptor(), QSocketNotifier::Read);
  connect(end.get(), &QSocketNotifier::activated, this, [this] {
    // The handle stays readable: the lock may be another's by now.
    end->setEnabled(false);
    end.release()->deleteLater();
    process.reset();
    look();
  });
}
