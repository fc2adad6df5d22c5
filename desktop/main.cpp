#include <QScopeGuard>
#include <QTimer>

#include "desktop/DesktopView.h"
#include "desktop/GuardedApplication.h"
#include "platform/HeapRoom.h"
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

int runApplication(GuardedApplication &loop) {
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
  try {
    return runApplication(loop);
  } catch (...) {
    BMLog("TLE UNCAUGHT: %@ %@", describeException(std::current_exception()), callStackSymbols());
    BMLogFlushFinal(false);
    throw;
  }
}
