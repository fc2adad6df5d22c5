#include "scanners/ScanProgressLog.h"

#include "platform/Platform.h"
#include "support/BMLog.h"

namespace {

constexpr double kSeconds = 300.0;

double now() {
  return platform().clock->now().seconds;
}

}  // namespace

ScanProgressLog::ScanProgressLog(const QString &lineLabel, quint64 tracks)
    : label(lineLabel), count(tracks), next(now() + kSeconds) {}

void ScanProgressLog::tell(quint64 index) {
  const double present = now();
  if (present <= next) return;
  BMLog("%@... %d%% [%llu/%llu]", label, int(index * 100 / count), index, count);
  next = present + kSeconds;
}
