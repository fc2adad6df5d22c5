#include <QScopeGuard>
#include <QTimer>

#include "audio/SongFile.h"
#include "bridge/iTunesInterface.h"
#include "desktop/DesktopView.h"
#include "desktop/GuardedApplication.h"
#include "platform/HeapRoom.h"
#include "platform/keeper/KeeperPlatform.h"
#include "platform/qt/QtPlatform.h"
#include "platform/qt/TerminationSignals.h"
#include "program/Application.h"
#include "support/BMLog.h"

namespace {

BundleInformation bundle() {
  BundleInformation information;
  information.executable = QStringLiteral("Tallyfen");
  information.identifier = QStringLiteral("com.brinmoor.tallyfen");
  information.shortVersion = QStringLiteral(TALLYFEN_VERSION);
  information.version = QStringLiteral(TALLYFEN_VERSION);
  information.commit = QStringLiteral(TALLYFEN_COMMIT);
  return information;
}

bool runsMusicApplication() {
  iTunesInterface::resetIsMusicAppRunning();
  return iTunesInterface::isMusicAppRunning();
}

/// The picture of a music file, which direct access to the library leaves to those who read tags.
QByteArray pictureOfFile(const QString &path) {
  const SongFilePtr song = SongFile::songWithPath(path);
  AudioInfoTag *const tag = song ? song->infotag() : nullptr;
  const std::vector<ID3ImagePtr> images = tag ? tag->images() : std::vector<ID3ImagePtr>();
  return images.empty() ? QByteArray() : images.front()->imageData();
}

int runApplication(GuardedApplication &loop) {
  const bool ranBefore = runsMusicApplication();
  DesktopView view;
  Application application(view);
  view.attach(application);
  const auto detach = qScopeGuard([&view] { view.detach(); });
  // `quit` would ask the windows first; by then the controller has decided.
  application.controller().onTerminate = [] { QCoreApplication::exit(0); };
  const TerminationSignals termination([&application] { application.customTerminate(); });
  QTimer::singleShot(0, &loop, [&application] { application.controller().awakeFromNib(); });
  const int code = loop.run();
  application.state().endAllWork();
  // A music application that nobody but this one has started ends with it.
  constexpr float kLongestSeconds = 4;
  if (!ranBefore) iTunesInterface::quitMusicAppWithin(kLongestSeconds);
  application.controller().applicationWillTerminate();
  return code;
}

}  // namespace

int main(int, char **argv) {
  shareOneHeap();
  // The application reads no command line: the toolkit sees the program's name alone.
  int count = 1;
  char *arguments[] = {argv[0], nullptr};
  GuardedApplication loop(count, arguments);
  const QtPlatform platform(bundle(), standardFolders(), standardPreferenceFolder());
  KeeperPlatform keeper(KeeperPlatform::Launching::WhenNeeded);
  keeper.libraryFramework().setPictureReader(pictureOfFile);
  try {
    return runApplication(loop);
  } catch (...) {
    BMLog("TLE UNCAUGHT: %@ %@", describeException(std::current_exception()), callStackSymbols());
    BMLogFlushFinal(false);
    throw;
  }
}
