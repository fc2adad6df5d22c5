#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <mutex>

#include "platform/keeper/KeeperPlatform.h"
#include "platform/qt/QtPlatform.h"
#include "program/Application.h"
#include "tests/fixtures/ScriptedView.h"

namespace {

/// A clock that runs faster than the machine's from a moment on, so that what hangs for minutes is found out
/// in seconds.
class QuickClock : public QtClock {
 public:
  Date now() const override {
    const std::lock_guard held(guard);
    return Date{begin.seconds + pace * (QtClock::now().seconds - begin.seconds)};
  }
  void sleep(double seconds) override { QtClock::sleep(seconds / paceOfNow()); }
  double paceOfNow() const {
    const std::lock_guard held(guard);
    return pace;
  }
  /// Once.
  void quicken() {
    const std::lock_guard held(guard);
    begin = QtClock::now();
    pace = kQuick;
  }

 private:
#ifdef TALLYFEN_SANITIZED
  static constexpr double kQuick = 10;
#else
  static constexpr double kQuick = 20;
#endif
  mutable std::mutex guard;
  Date begin = QtClock::now();
  double pace = 1;
};

/// Timers by that clock.
class QuickLoop : public QtMainLoop {
 public:
  explicit QuickLoop(const QuickClock &clock) : time(clock) {}
  TimerID startTimer(double seconds, bool repeating, Task task) override {
    return QtMainLoop::startTimer(seconds / time.paceOfNow(), repeating, std::move(task));
  }

 private:
  const QuickClock &time;
};

/// Somebody who merges as soon as a scan has ended, wants to go on whatever is asked, and leaves with the
/// merge's end. All that happens goes to a file at once, a line each, behind those of earlier processes.
class MergingView : public ScriptedView {
 public:
  MergingView() {
    for (const char *question :
         {"PlaylistsUnknownTitle", "HugePlaylistWarningTitle", "PlaylistSizeWarningTitle"})
      answers[QString::fromUtf8(question)] = 1;
    // The music application has quit: so does who uses this.
    answers[QStringLiteral("iTunesQuitAlertTitle")] = 1;
  }

  void libraryDidLoad(qsizetype tracks) override {
    if (tracks > 0 && clock->paceOfNow() == 1) clock->quicken();
  }
  void scanDidEnd() override {
    tell(QStringLiteral("scan"));
    platform().mainLoop->post([this] { application->mergeMarkedDuplicates(); });
  }
  int runAlert(const Alert &alert) override {
    tell(QStringLiteral("alert ") + alert.key);
    return ScriptedView::runAlert(alert);
  }
  void beginSheet(const Alert &alert, std::function<void(int)> done) override {
    tell(QStringLiteral("sheet ") + alert.key);
    ScriptedView::beginSheet(alert, std::move(done));
  }
  void mergeDidEnd() override {
    const MergeReport::Contents report = application->state().merge.report.contents();
    for (const MergeFailure &failure : report.failures)
      tell(QStringLiteral("failure %1: %2").arg(failure.path, failure.reason));
    const MergeTotals after = report.after.value_or(MergeTotals());
    tell(QStringLiteral("end tracks %1 plays %2 files %3")
             .arg(after.tracks)
             .arg(after.plays)
             .arg(after.files));
    platform().mainLoop->post([this] { application->customTerminate(); });
  }

  static void tell(const QString &line) {
    QFile file(QDir::homePath() + QStringLiteral("/Merging.txt"));
    if (file.open(QIODevice::Append)) file.write(line.toUtf8() + '\n');
  }

  Application *application = nullptr;
  QuickClock *clock = nullptr;
};

}  // namespace

/// The window's program without its windows and with a quick clock. Its one argument, if any, stands for the
/// tool that opens it again.
int main(int count, char **arguments) {
  QCoreApplication loop(count, arguments);
  BundleInformation bundle;
  bundle.executable = QStringLiteral("Tallyfen");
  bundle.identifier = QStringLiteral("com.brinmoor.tallyfen");
  bundle.shortVersion = bundle.version = QStringLiteral("1");
  const QtPlatform desktop(bundle, standardFolders(), standardPreferenceFolder());
  QuickClock clock;
  QuickLoop mainLoop(clock);
  Platform services = desktop.services();
  services.clock = &clock;
  services.mainLoop = &mainLoop;
  setPlatform(services);
  const KeeperPlatform keeper(KeeperPlatform::Launching::WhenNeeded);
  MergingView view;
  Application application(view);
  view.application = &application;
  view.clock = &clock;
  if (count > 1) application.savedState().toolPath = QFile::decodeName(arguments[1]);
  application.controller().onTerminate = [] { QCoreApplication::exit(0); };
  MergingView::tell(QStringLiteral("launch"));
  mainLoop.post([&application] { application.controller().awakeFromNib(); });
  const int code = QCoreApplication::exec();
  application.state().endAllWork();
  application.controller().applicationWillTerminate();
  return code;
}
