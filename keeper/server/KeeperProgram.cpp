#include "keeper/server/KeeperProgram.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QMetaObject>
#include <iostream>
#include <thread>
#include <utility>

#include "keeper/server/KeeperService.h"
#include "keeper/server/MusicKeeper.h"
#include "platform/Platform.h"
#include "platform/keeper/KeeperFolder.h"
#include "platform/keeper/KeeperLock.h"
#include "platform/qt/TerminationSignals.h"
#include "support/BMLog.h"

namespace keeperProgram {

namespace {

void print(const QString &lines) {
  std::cout << lines.toStdString() << std::endl;
}

int fail(int code, const QString &message) {
  std::cerr << "tallyfen-keeper: " << message.toStdString() << std::endl;
  BMLog("!!! %@", message);
  return code;
}

/// The lines of what was done, or why it was not; true if it was.
bool tell(const ScriptOutcome &outcome) {
  if (outcome.failure) fail(kFailed, outcome.failure->message);
  if (outcome.result) print(outcome.result->text);
  return !outcome.failure;
}

int doOnce(MusicKeeper &keeper, const KeeperOptions &options) {
  const QString problem = keeper.open();
  if (!problem.isEmpty()) return fail(kFailed, problem);
  bool isDone = tell(keeper.openingImport());
  if (isDone && !options.exportFile.isEmpty()) isDone = tell(keeper.exportFile({options.exportFile}));
  keeper.close();
  return isDone ? kDone : kFailed;
}

/// Ends the service while the main loop still takes in signals.
void stopBesideEvents(KeeperService &service) {
  QEventLoop loop;
  std::thread stopping([&] {
    service.stop();
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
  });
  loop.exec();
  stopping.join();
}

int serve(MusicKeeper &keeper, const KeeperPlace &place, const QString &folder) {
  QString failure;
  bool isEnding = false;
  const auto onEnd = [&](const QString &problem) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [&, problem] {
          if (std::exchange(isEnding, true)) return;
          failure = problem;
          QCoreApplication::quit();
        },
        Qt::QueuedConnection);
  };
  KeeperService service(place, keeper, onEnd);
  // The first waits for the script that runs, the next one does not.
  const TerminationSignals signals([&] { isEnding ? keeper.interrupt() : onEnd({}); });
  QString error;
  if (!service.start(&error)) return fail(kFailed, error);
  BMLog("Music Keeper %@ serves %@ (process %d)", platform().bundle.shortVersion, folder, int(::getpid()));
  QCoreApplication::exec();
  stopBesideEvents(service);
  return failure.isEmpty() ? kDone : fail(kFailed, failure);
}

int runLocked(const KeeperOptions &options, const KeeperPlace &place) {
  const QString folder = options.folder.isEmpty() ? keeperFolder::ofUser() : options.folder;
  MusicKeeper::Setup setup;
  setup.folder = folder;
  setup.import = {options.importFile, options.mapping};
  setup.waitsForImport = options.once;
  MusicKeeper keeper(setup);
  if (options.once) return doOnce(keeper, options);
  keeperFolder::note(folder);
  return serve(keeper, place, folder);
}

}  // namespace

int run(const QStringList &arguments) {
  QString error;
  const auto options = KeeperOptions::parse(arguments, &error);
  if (!options) {
    std::cerr << "tallyfen-keeper: " << error.toStdString() << '\n'
              << KeeperOptions::usage().toStdString() << '\n';
    return kWrongUse;
  }
  if (options->help) print(KeeperOptions::usage());
  if (options->version) print(QStringLiteral("tallyfen-keeper ") + platform().bundle.shortVersion);
  if (options->help || options->version) return kDone;
  const KeeperPlace place = KeeperPlace::ofUser(platform().folders.temporary);
  if (!place.prepare(&error)) return fail(kFailed, error);
  KeeperLock lock(place.lock());
  switch (lock.take(&error)) {
    case KeeperLock::Taken::Yes:
      break;
    case KeeperLock::Taken::Failed:
      return fail(kFailed, error);
    case KeeperLock::Taken::HeldByOther:
      return fail(kAnotherServes, QStringLiteral("Music Keeper runs already (process %1)")
                                      .arg(KeeperLock::holder(place.lock()).value_or(0)));
  }
  const int code = runLocked(*options, place);
  BMLogFlushFinal(false);
  return code;
}

}  // namespace keeperProgram
