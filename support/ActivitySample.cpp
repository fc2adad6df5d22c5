#include "support/ActivitySample.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <cerrno>

#include "platform/Platform.h"
#include "support/BMLog.h"

namespace {

constexpr int kLooks = 5;
constexpr qsizetype kMostTasks = 64;

QByteArray read(const QString &path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.read(8192).trimmed() : QByteArray();
}

/// "name, S (sleeping), waits in futex_wait" for one task.
QString taskLine(const QString &task) {
  const QByteArray status = read(task + u"/status"_qs);
  if (status.isEmpty()) return {};
  QString name, state;
  for (const QByteArray &line : status.split('\n')) {
    if (line.startsWith("Name:")) name = QString::fromUtf8(line.mid(5).trimmed());
    if (line.startsWith("State:")) state = QString::fromUtf8(line.mid(6).trimmed());
  }
  const QByteArray channel = read(task + u"/wchan"_qs);
  QString text = name + u", "_qs + state;
  if (!channel.isEmpty() && channel != "0") text += u", waits in "_qs + QString::fromUtf8(channel);
  return text;
}

/// Counts what each task is found doing.
void look(const QString &process, QMap<QString, int> &seen) {
  const QDir tasks(process + u"/task"_qs);
  const QStringList names = tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
  for (const QString &task : names.first(std::min(kMostTasks, names.size()))) {
    const QString line = taskLine(tasks.filePath(task));
    if (!line.isEmpty()) ++seen[task + u' ' + line];
  }
}

}  // namespace

int BMUtility::logActivityForProcessSeconds(qint64 processID, float seconds) {
  if (processID <= 0) return ESRCH;
  if (!QFile::exists(QStringLiteral("/proc/self/status"))) return ENOTSUP;
  const QString process = QStringLiteral("/proc/%1").arg(processID);
  if (!QFile::exists(process)) return ESRCH;
  QMap<QString, int> seen;
  for (int turn = 0; turn < kLooks; ++turn) {
    if (turn > 0) platform().clock->sleep(double(seconds) / (kLooks - 1));
    look(process, seen);
  }
  QStringList lines{QString::fromUtf8(read(process + u"/status"_qs))};
  for (auto entry = seen.cbegin(); entry != seen.cend(); ++entry) {
    lines += QStringLiteral("%1 of %2: %3").arg(entry.value()).arg(kLooks).arg(entry.key());
  }
  BMLog("Sample of PID %d:\n%@", processID, lines.join(u'\n'));
  return 0;
}
