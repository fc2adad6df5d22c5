#pragma once

#include <functional>

#include "keeper/library/EntryTable.h"
#include "keeper/library/LibraryStore.h"
#include "keeper/library/Player.h"
#include "keeper/library/PlaylistTable.h"
#include "keeper/library/TrackTable.h"
#include "platform/keeper/KeeperSettings.h"

/// What the application asks of the program around it. Each is called on the thread of the scripts and may be
/// empty.
struct KeeperHooks {
  /// Asked whenever a setting matters; without it all settings are as they come.
  std::function<KeeperSettings()> settings;
  /// Sees to it that the library's XML is written, and need not wait for that; empty, or one line that says
  /// what failed.
  std::function<QString()> exportLibrary;
  /// Ends the program soon: the script that asked for it is answered first.
  std::function<void()> quit;
};

/// What all things of the application share. Outlives them. One thread.
struct KeeperContext {
  KeeperContext(LibraryStore &library, KeeperHooks given) : store(library), hooks(std::move(given)) {}

  KeeperSettings settings() const { return hooks.settings ? hooks.settings() : KeeperSettings(); }

  LibraryStore &store;
  KeeperHooks hooks;
  Player player;
};
