#include <unistd.h>

#include <QCoreApplication>
#include <iostream>

#include "ctl/CommandTable.h"
#include "platform/HeapRoom.h"
#include "platform/keeper/KeeperLibraryFramework.h"
#include "platform/qt/QtPlatform.h"

int main(int argumentCount, char *arguments[]) {
  shareOneHeap();
  std::ios::sync_with_stdio(false);
  QCoreApplication application(argumentCount, arguments);
  BundleInformation bundle;
  bundle.executable = QStringLiteral("tallyfenctl");
  bundle.identifier = QStringLiteral("com.brinmoor.tallyfen");
  bundle.shortVersion = QStringLiteral(TALLYFEN_VERSION);
  bundle.version = bundle.shortVersion;
  const QtPlatform services(bundle, standardFolders(), standardPreferenceFolder());
  // Music Keeper's library is read without it: commands that only look start nothing.
  KeeperLibraryFramework library;
  Platform withLibrary = services.services();
  withLibrary.libraryFramework = &library;
  setPlatform(withLibrary);
  Terminal terminal{std::cin, std::cout, std::cerr, ::isatty(STDERR_FILENO) != 0,
                    ::isatty(STDIN_FILENO) != 0};
  return CommandTable().run(QCoreApplication::arguments().sliced(1), terminal);
}
