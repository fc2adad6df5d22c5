#include "app/ImportWait.h"

#include "app/state/AppState.h"
#include "app/state/LocalizedAlert.h"
#include "app/state/Operation.h"
#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "support/BMLog.h"

namespace {

constexpr double kStepSeconds = 0.25;
constexpr double kSilenceSeconds = 30.0;

double now() {
  return platform().clock->now().seconds;
}

bool hasTracks() {
  LibraryFramework *const library = iTunesLibInterface::libraryObject();
  return library && library->mediaItemCount() > 0;
}

}  // namespace

ImportWait::~ImportWait() {
  platform().mainLoop->stopTimer(timer);
}

bool ImportWait::begin(std::function<void()> done) {
  if (!iTunesInterface::haveBridge()) return false;
  const LibraryActivity activity = platform().workspace->libraryActivity();
  const bool mayImport = activity.state == LibraryActivity::State::NoAnswer && !hasTracks();
  if (activity.state != LibraryActivity::State::Importing && !mayImport) {
    tellProblem(activity.problem);
    return false;
  }
  BMLog("Waiting for %@ to take in its library: %@", iTunesInterface::musicAppName(), activity.file);
  whenDone = std::move(done);
  begun = lastAnswer = now();
  state.mMusicLibraryBusy = true;
  state.view.setProgressText(localizedMessage(QStringLiteral("ImportingLibrary")));
  state.view.setProgressQuote(localizedMessage(QStringLiteral("QuoteImportingLibrary")));
  state.view.setProgressSubText({});
  state.view.setCancelEnabled(false);
  show(activity);
  operation.progressSheet().displayProgressSheet();
  timer = platform().mainLoop->startTimer(kStepSeconds, true, [this] { look(); });
  return true;
}

void ImportWait::show(const LibraryActivity &activity) {
  ProblemView &view = state.view;
  view.setProgressIndeterminate(activity.total <= 0);
  if (activity.total <= 0) return;
  view.setProgressMaximum(double(activity.total));
  view.setProgressValue(double(activity.done));
  view.setProgressSubText(localizedMessage(QStringLiteral("ImportedCount"), activity.done, activity.total));
}

void ImportWait::look() {
  // While the user is asked whether the application shall be opened again nothing is decided here.
  if (state.mIsEnding || state.mQuitAlertShown) {
    lastAnswer = now();
    return;
  }
  const LibraryActivity activity = platform().workspace->libraryActivity();
  const bool isOver = activity.state == LibraryActivity::State::None && iTunesInterface::isMusicAppRunning();
  if (activity.state == LibraryActivity::State::Importing) {
    lastAnswer = now();
    return show(activity);
  }
  if (!isOver && now() - lastAnswer < kSilenceSeconds) return;
  BMLog("... %@ after %.1f secs",
        isOver ? QStringLiteral("library taken in") : QStringLiteral("GAVE UP waiting"), now() - begun);
  platform().mainLoop->stopTimer(timer);
  timer = 0;
  state.mMusicLibraryBusy = false;
  state.view.setProgressIndeterminate(true);
  state.view.setProgressSubText({});
  tellProblem(activity.problem);
  iTunesLibInterface::reloadLibrary();
  const std::function<void()> done = std::move(whenDone);
  whenDone = {};
  done();
}

void ImportWait::tellProblem(const QString &problem) {
  if (problem.isEmpty() || problem == toldProblem) return;
  toldProblem = problem;
  BMLog("!!! %@ could not take in its library: %@", iTunesInterface::musicAppName(), problem);
  const QString message = localizedMessage(QStringLiteral("ImportFailedMessage"));
  state.view.runAlert(localizedAlert(QStringLiteral("ImportFailedTitle"),
                                     message + QStringLiteral("\n\n") + problem,
                                     {QStringLiteral("ImportFailedOK")}));
}
