#pragma once

#include "platform/Platform.h"
#include "platform/keeper/KeeperLibraryFramework.h"
#include "platform/keeper/KeeperScriptHost.h"
#include "platform/keeper/KeeperWorkspace.h"

/// The services of a platform with the music application's among them, which is the keeper of this user. Puts
/// them into force while it lives; then the others are in force again. Main thread, before any other thread
/// and after all of them; behind the application object.
class KeeperPlatform {
 public:
  enum class Launching { Never, WhenNeeded };

  /// Stands on the services that are in force. With `Never` a script that finds no keeper fails with -600.
  explicit KeeperPlatform(Launching launching, const QString &program = KeeperLauncher::standardProgram());
  KeeperPlatform(const KeeperPlatform &) = delete;
  ~KeeperPlatform();

  const Platform &services() const { return current; }
  KeeperLibraryFramework &libraryFramework() { return library; }

 private:
  const Platform outer;
  const KeeperPlace place;
  KeeperLauncher launcher;
  KeeperWorkspace workspace;
  KeeperScriptHost scriptHost;
  KeeperLibraryFramework library;
  Platform current;
};
