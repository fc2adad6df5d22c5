#pragma once

#include "platform/Platform.h"
#include "platform/qt/FilePreferenceStore.h"
#include "platform/qt/IcuUnicode.h"
#include "platform/qt/LibplistPropertyList.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtFileFacts.h"
#include "platform/qt/QtImages.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkspace.h"

/// The user's own folders.
Folders standardFolders();

/// Where the programs keep their preferences: a folder in the user's configuration folder.
QString standardPreferenceFolder();

/// The folder of the data files: "../share/tallyfen/resources" beside the program, else "../resources" (a
/// build tree), else the source tree that this was built from; empty if none of them stands.
QString standardResourceFolder();

/// Owns the desktop services and puts them into force. Made by `main` after the application object and before
/// any other thread; outlives everything that asks `platform()`.
class QtPlatform {
 public:
  /// A bundle without a resource folder gets the standard one.
  QtPlatform(const BundleInformation &bundle, const Folders &folders, const QString &preferenceFolder);
  QtPlatform(const QtPlatform &) = delete;
  QtPlatform &operator=(const QtPlatform &) = delete;

  /// What was put into force. A program that replaces a service hands a changed copy to `setPlatform`.
  const Platform &services() const { return current; }

 private:
  QtClock clock;
  QtMainLoop mainLoop;
  LibplistPropertyList propertyLists;
  FilePreferenceStore preferences;
  IcuUnicode unicode;
  QtWorkspace workspace;
  QtFileFacts fileFacts;
  QtImages images;
  Platform current;
};
