#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>

#include "platform/Platform.h"

/// What a fuzz target says must hold; the run ends where it does not.
inline void require(bool holds) {
  if (!holds) std::abort();
}

/// A moment that stands still.
class StillClock : public Clock {
 public:
  Date now() const override { return {}; }
  void sleep(double) override {}
};

/// Lets log lines be made and go nowhere: a run would fill the disk with them. Once a process.
inline void silence() {
  static const bool done = [] {
    static StillClock clock;
    static const QTemporaryDir folder;
    Platform services;
    services.clock = &clock;
    services.folders.applicationSupport = folder.path();
    services.bundle = {
        QStringLiteral("fuzz"), QStringLiteral("fuzz"), QStringLiteral("1"), QStringLiteral("1"), {}, {}};
    QDir(folder.path()).mkpath(QStringLiteral("fuzz"));
    setPlatform(services);
    return QFile::link(QStringLiteral("/dev/null"), folder.path() + QStringLiteral("/fuzz/Log-1-(1).txt"));
  }();
  require(done);
}
