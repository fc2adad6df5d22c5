#pragma once

#include <QString>

#include "platform/Clock.h"
#include "platform/FileFacts.h"
#include "platform/Images.h"
#include "platform/LibraryFramework.h"
#include "platform/MainLoop.h"
#include "platform/PreferenceStore.h"
#include "platform/ScriptHost.h"
#include "platform/SystemPropertyList.h"
#include "platform/Unicode.h"
#include "platform/Workspace.h"

/// The user's folders, absolute and without a slash at the end; empty where the platform has none.
struct Folders {
  QString home;
  /// Holds the log, in a folder of the program's own.
  QString applicationSupport;
  QString temporary;
  /// What may be thrown away at any time; every program has a folder of its own in it.
  QString caches;
  /// The user's music.
  QString music;
};

/// What the running program says of itself.
struct BundleInformation {
  QString executable;
  QString identifier;
  QString shortVersion;
  QString version;
  QString commit;
  /// The folder of "resources.plist", "strings/" and the other data files.
  QString resourceFolder;
};

/// All that the system asks of the machine. The services are owned by whoever made the platform and outlive
/// it.
struct Platform {
  Clock *clock = nullptr;
  MainLoop *mainLoop = nullptr;
  PreferenceStore *preferences = nullptr;
  SystemPropertyList *propertyLists = nullptr;
  Unicode *unicode = nullptr;
  Workspace *workspace = nullptr;
  FileFacts *fileFacts = nullptr;
  Images *images = nullptr;
  /// Null where there is no way to speak to a music application.
  ScriptHost *scriptHost = nullptr;
  /// Null where the library can be read from its file alone.
  LibraryFramework *libraryFramework = nullptr;
  Folders folders;
  BundleInformation bundle;
};

/// The platform in force. Any thread, once set.
const Platform &platform();

/// Sets the platform: once in `main` before any other thread, and by each test's fixture.
void setPlatform(const Platform &services);
