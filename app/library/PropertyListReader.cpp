#include "app/library/PropertyListReader.h"

#include <QElapsedTimer>

#include "app/library/PropertyListPass.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/FormatCount.h"

namespace {

constexpr qsizetype kShortest = 6;
constexpr qsizetype kLarge = 100000;

double secondsSince(const QElapsedTimer &timer) {
  return qMax<qint64>(timer.nsecsElapsed(), 1) * 1e-9;
}

void logBeginning(qsizetype size, bool trySystemFirst) {
  if (size >= kLarge) {
    BMLog("[mutPListFrom] %ld bytes (%@B) sysFirst:%d", size, formatCount(double(size)), int(trySystemFirst));
  } else {
    BMLog("[mutPListFrom] %ld bytes sysFirst:%d", size, int(trySystemFirst));
  }
}

/// What the caller learns when the system's text meets the outcome of our own pass.
void joinErrors(const QString &manual, QString &text) {
  if (!manual.isEmpty()) {
    text = text.isEmpty() ? manual : QStringLiteral("%1 (manual: %2)").arg(text, manual);
    BMLog("mutPlistFrom failure \"%@\"", text);
  } else if (!text.isEmpty()) {
    BMLog("mutPlistFrom manual success after sys fail \"%@\"", text);
    text.clear();
  }
}

}  // namespace

Value BMUtility::mutablePropertyListFromDataTrySystemFirstErrorDescription(QByteArrayView data,
                                                                           bool trySystemFirst,
                                                                           QString *errorDescription,
                                                                           PropertyListCounts *counts) {
  if (counts) *counts = {};
  logBeginning(data.size(), trySystemFirst);
  if (data.size() < kShortest) return {};
  QString own;
  QString &error = errorDescription ? *errorDescription : own;
  QElapsedTimer timer;
  timer.start();
  const SystemPropertyList *system = platform().propertyLists;
  if (system && (trySystemFirst || data.startsWith(QByteArrayView("bplist")))) {
    const Value root = system->parse(data, &error);
    if (!root.isNull() && error.isEmpty()) {
      const double seconds = secondsSince(timer);
      BMLog("[mutPListFrom] sys fin %@bytes/sec (%@ secs)", formatCount(double(data.size()) / seconds),
            formatCount(seconds));
      return root;
    }
  }
  PropertyListPass pass(data);
  Value root = pass.read();
  joinErrors(pass.error(), error);
  const double seconds = secondsSince(timer);
  BMLog("[mutPListFrom] fin %@bytes/sec (%.2f secs, %ld values, %ld UTF8 errors)",
        formatCount(double(data.size()) / seconds), seconds, pass.counts().values, pass.counts().undecodable);
  if (counts) {
    *counts = pass.counts();
    counts->isManual = true;
  }
  return root;
}
