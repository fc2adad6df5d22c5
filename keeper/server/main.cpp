#include <QCoreApplication>

#include "keeper/server/KeeperProgram.h"
#include "platform/HeapRoom.h"
#include "platform/KeeperIdentity.h"
#include "platform/qt/QtPlatform.h"

int main(int argumentCount, char *arguments[]) {
  shareOneHeap();
  QCoreApplication application(argumentCount, arguments);
  BundleInformation bundle;
  bundle.executable = QStringLiteral("tallyfen-keeper");
  bundle.identifier = keeperIdentity::kIdentifier;
  bundle.shortVersion = QStringLiteral(TALLYFEN_VERSION);
  bundle.version = bundle.shortVersion;
  const QtPlatform services(bundle, standardFolders(), standardPreferenceFolder());
  return keeperProgram::run(QCoreApplication::arguments().sliced(1));
}
