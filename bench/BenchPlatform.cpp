#include "bench/BenchPlatform.h"

#include <sys/resource.h>

#include <QTemporaryDir>
#include <ctime>

#include "platform/Platform.h"
#include "platform/qt/IcuUnicode.h"
#include "tests/fixtures/MemoryPreferenceStore.h"

namespace {

class SystemClock : public Clock {
 public:
  Date now() const override { return Date::fromUnix(double(std::time(nullptr))); }
  void sleep(double) override {}
};

}  // namespace

void startBenchPlatform() {
  static QTemporaryDir temporary;
  static SystemClock clock;
  static MemoryPreferenceStore preferences;
  static IcuUnicode unicode;
  Platform services;
  services.clock = &clock;
  services.preferences = &preferences;
  services.unicode = &unicode;
  const QString folder = temporary.path();
  services.folders = {folder, folder, folder, folder, folder};
  services.bundle.identifier = QStringLiteral("org.tallyfen.Bench");
  services.bundle.version = services.bundle.shortVersion = QStringLiteral("1");
  setPlatform(services);
}

qint64 peakKilobytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}
