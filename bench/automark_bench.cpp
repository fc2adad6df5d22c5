// Automark of 50,000 groups with files on disk, measured against the least that it can take: a bare loop of
// file status calls over the same paths, in turn with it.

#include <benchmark/benchmark.h>
#include <sys/stat.h>
#include <time.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include "app/PrefsController.h"
#include "app/library/LibraryPreparation.h"
#include "app/library/PropertyListReader.h"
#include "bench/LibrarySample.h"
#include "platform/qt/QtPlatform.h"
#include "program/Application.h"
#include "support/Copy.h"
#include "support/Preferences.h"
#include "tests/fixtures/ScriptedView.h"
#include "values/Keys.h"

namespace {

constexpr int kGroups = 50000;
/// Groups of two, every tenth of three.
constexpr int kRows = kGroups * 21 / 10;

/// Processor time of the process, the system's calls included: what others do meanwhile does not count.
double seconds() {
  timespec now = {};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

/// The rows of a scan over a library whose files stand in a temporary folder, sparse, each artist and album
/// in a folder of its own.
class AutomarkBench {
 public:
  AutomarkBench() : services(bundle(), folders(), home()), application(view) {
    const Array criteria = Array::make();
    for (int criterion = 0; criterion < 8; ++criterion) criteria.append(QString::number(criterion));
    prefs::set(prefs::preferInfoTypes, criteria);
    makeRows();
    makeFiles();
  }

  /// The sum of the sizes, so that no call can be left out.
  qint64 fileStatusLoop() const {
    qint64 sum = 0;
    struct stat facts = {};
    for (const QByteArray &path : paths) sum += ::stat(path.constData(), &facts) == 0 ? facts.st_size : 0;
    return sum;
  }

  Application &program() { return application; }

 private:
  static BundleInformation bundle() {
    BundleInformation made;
    made.identifier = QStringLiteral("org.tallyfen.Bench");
    made.shortVersion = made.version = QStringLiteral("0");
    return made;
  }
  QString home() const { return folder.path(); }
  Folders folders() const {
    Folders made;
    made.home = made.applicationSupport = made.temporary = made.music = home();
    return made;
  }

  void makeRows() {
    QByteArray xml = librarySample(kRows);
    const QByteArray media = QUrl::fromLocalFile(home() + QStringLiteral("/Music/")).toEncoded();
    xml.replace("file:///Users/listener/Music/iTunes/iTunes%20Media/Music/", media);
    QString error;
    const Dictionary library =
        BMUtility::mutablePropertyListFromDataTrySystemFirstErrorDescription(xml, false, &error)
            .toDictionary();
    TrackFilter filter(PrefsController::resources());
    const PreparedLibrary prepared = prepareLibrary(library, filter, {}, {});
    const Array rows = Array::make();
    for (const Value &track : prepared.sortedTracks) {
      const Dictionary row = copyDeep(track.toDictionary());
      const qint64 place = rows.size();
      row.set(keys::DupeGroup, place / 21 * 10 + qMin<qint64>(place % 21 / 2, 9) + 1);
      rows.append(row);
    }
    application.state().lists.mDuplicateSongDicts = rows;
    application.setStripesForDupesFromIndex(0);
  }

  void makeFiles() {
    QString lastFolder;
    for (const Value &row : application.state().lists.mDuplicateSongDicts) {
      const QString &path = row.toDictionary().value(keys::Path).toText();
      const QString parent = path.left(path.lastIndexOf(u'/'));
      if (parent != lastFolder) QDir().mkpath(parent);
      lastFolder = parent;
      QFile file(path);
      if (!file.open(QIODevice::WriteOnly) || !file.resize(5000000)) qFatal("no room for the files");
      paths.push_back(QFile::encodeName(path));
    }
  }

  QTemporaryDir folder;
  QtPlatform services;
  ScriptedView view;
  Application application;
  std::vector<QByteArray> paths;
};

/// Made and ended by `main`.
AutomarkBench *rowsOnDisk = nullptr;

/// Seconds of one automark; "statLoop" is the time of the bare loop, "ratio" the first by the second.
void automark(benchmark::State &bench) {
  AutomarkBench &library = *rowsOnDisk;
  double marking = 0, looping = 0;
  library.fileStatusLoop();
  for (auto round : bench) {
    const double begin = seconds();
    benchmark::DoNotOptimize(library.fileStatusLoop());
    const double middle = seconds();
    library.program().automark().doAutomarkFromPreferences();
    const double end = seconds();
    looping += middle - begin;
    marking += end - middle;
    bench.SetIterationTime(end - middle);
  }
  bench.counters["rows"] = kRows;
  bench.counters["groups"] = double(library.program().automark().lastChoices().size());
  bench.counters["statLoop"] = looping / double(bench.iterations());
  bench.counters["ratio"] = marking / looping;
}

/// The marks of the whole list go in the first round; the others look for marks and find none.
void unmark(benchmark::State &bench) {
  for (auto round : bench) rowsOnDisk->program().automark().doUnmark();
}

BENCHMARK(automark)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(unmark)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argumentCount, char **argumentTexts) {
  const QCoreApplication application(argumentCount, argumentTexts);
  benchmark::Initialize(&argumentCount, argumentTexts);
  AutomarkBench made;
  rowsOnDisk = &made;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
