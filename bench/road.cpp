// The whole road of a library: read, prepare, scan for duplicates and for names. For each size given (10000
// 100000 300000 by default) it makes a library with the demo maker and measures in a process of its own, with
// either parser first. The disk is out of the way: every file counts as there.
//
//   road [TRACKS...]

#include <malloc.h>
#include <sys/resource.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>

#include "app/PrefsController.h"
#include "app/library/LibraryFile.h"
#include "app/library/LibraryPreparation.h"
#include "app/state/AppState.h"
#include "platform/qt/QtPlatform.h"
#include "scanners/DuplicateScanner.h"
#include "scanners/InconNameController.h"
#include "scanners/InconsistentNameScanner.h"
#include "support/Preferences.h"
#include "tests/fixtures/ScriptedView.h"
#include "text/Simplified.h"
#include "values/Keys.h"

namespace {

double seconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// A line of /proc/self/status in bytes.
double statusBytes(const char *name) {
  QFile file(QStringLiteral("/proc/self/status"));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray &line : file.readAll().split('\n')) {
    if (line.startsWith(name))
      return line.mid(int(qstrlen(name)) + 1).simplified().split(' ').at(0).toDouble() * 1024;
  }
  return 0;
}

/// Measures one library in this process and prints one line.
int measure(const QString &path, bool manualFirst, const QString &home) {
  BundleInformation bundle;
  bundle.executable = QStringLiteral("road");
  bundle.identifier = QStringLiteral("com.brinmoor.tallyfen");
  bundle.shortVersion = bundle.version = QStringLiteral("0");
  const QtPlatform services(bundle, {home, home, home, home, home}, home);
  prefs::set(prefs::noSystemDeserialize, manualFirst);
  prefs::set(prefs::allowedDurationVariation, 10);
  prefs::set(prefs::ignoreDurationMinimum, 30);
  setSimplifiersDictionaryRemoveTrailingS(
      PrefsController::resources().value(keys::simplifiers).toDictionary(), false);
  TrackFilter filter(PrefsController::resources());
  const double residentBefore = statusBytes("VmRSS:");

  ScriptedView view;
  AppState state(view);
  QString error;
  const double begin = seconds();
  const Dictionary library = iTunesInterface::getMusicLibraryDictionaryAtPathWithError(path, &error);
  const double parsed = seconds();
  if (!error.isEmpty()) {
    std::fprintf(stderr, "%s\n", qPrintable(error));
    return 1;
  }
  const PreparedLibrary prepared = prepareLibrary(library, filter, {}, {});
  const double loaded = seconds();
  const double tracks = double(prepared.sortedTracks.size());
  const double resident = statusBytes("VmRSS:") - residentBefore;
  const double loadPeak = statusBytes("VmHWM:");

  state.library.mMusicLibrarySortedTracks = prepared.sortedTracks;
  DuplicateScanner scanner(state);
  scanner.setFileExists([](const QString &) { return true; });
  const double scanBegin = seconds();
  scanner.scanLibraryForDuplicatesThread();
  const double scanned = seconds();
  InconNameController names;
  names.setResources(PrefsController::resources());
  const double namesBegin = seconds();
  InconsistentNameScanner(state, names).scanLibraryForInconsistentNamesThread();
  const double named = seconds();

  const double megabytes = double(QFile(path).size()) / 1e6;
  std::printf(
      "%-7s %8.0f tracks %7.1f MB | parse %6.2f s %6.1f MB/s | load %6.2f s %8.0f tracks/s | resident %5.0f "
      "B/track, "
      "peak %5.0f MB | scan %6.3f s %9.0f tracks/s, %d rows | names %6.3f s, %d rows | "
      "peak +%.0f B/track\n",
      manualFirst ? "manual" : "system", tracks, megabytes, parsed - begin, megabytes / (parsed - begin),
      loaded - begin, tracks / (loaded - begin), resident / tracks, loadPeak / 1e6, scanned - scanBegin,
      tracks / (scanned - scanBegin), int(state.lists.mDuplicateSongDicts.size()), named - namesBegin,
      int(state.lists.mInconsistentNameDicts.size()), (statusBytes("VmHWM:") - loadPeak) / tracks);
  return 0;
}

int run(const QString &program, const QStringList &arguments) {
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedChannels);
  process.start(program, arguments);
  process.waitForFinished(-1);
  return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : 1;
}

}  // namespace

int main(int argumentCount, char **argumentTexts) {
  const QCoreApplication application(argumentCount, argumentTexts);
  const QStringList arguments = QCoreApplication::arguments().sliced(1);
  if (arguments.value(0) == QStringLiteral("--one")) {
    return measure(arguments.value(1), arguments.value(2) == QStringLiteral("manual"), arguments.value(3));
  }
  QStringList sizes = arguments;
  if (sizes.isEmpty()) sizes = {QStringLiteral("10000"), QStringLiteral("100000"), QStringLiteral("300000")};
  const QString maker = QCoreApplication::applicationDirPath() + QStringLiteral("/demo-library");
  for (const QString &size : sizes) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Music/iTunes/iTunes Music Library.xml"));
    if (run(maker, {folder.path(), QStringLiteral("--tracks"), size, QStringLiteral("--no-media")}) != 0)
      return 1;
    for (const char *order : {"manual", "system"}) {
      const int result = run(QCoreApplication::applicationFilePath(),
                             {QStringLiteral("--one"), path, QString::fromLatin1(order), folder.path()});
      if (result != 0) return result;
    }
  }
  return 0;
}
