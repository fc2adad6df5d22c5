#include "platform/keeper/KeeperPlatform.h"

KeeperPlatform::KeeperPlatform(Launching launching, const QString &program)
    : outer(platform()),
      place(KeeperPlace::ofUser(outer.folders.temporary)),
      launcher(program),
      workspace(outer.workspace, place, &launcher),
      scriptHost(place, launching == Launching::WhenNeeded ? std::optional(launcher) : std::nullopt),
      current(outer) {
  current.workspace = &workspace;
  current.scriptHost = &scriptHost;
  current.libraryFramework = &library;
  setPlatform(current);
}

KeeperPlatform::~KeeperPlatform() {
  setPlatform(outer);
}
