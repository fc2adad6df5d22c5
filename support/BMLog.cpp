#include "support/BMLog.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <cerrno>
#include <cmath>
#include <cstring>

#include "platform/Platform.h"
#include "platform/WriteAll.h"
#include "support/PreferenceKeys.h"
#include "support/ZipFile.h"

namespace {

struct Log {
  std::recursive_mutex lock;
  QString path;
  int handle = -1;
  /// The file is new and has no entry yet, so the next one needs no newline ahead of it.
  bool first = false;

  void close() {
    if (handle >= 0) ::close(handle);
    handle = -1;
  }
};

/// Never destroyed: entries may come until the process is gone.
Log &log() {
  static Log &log = *new Log;
  return log;
}

QString computedPath() {
  const BundleInformation &bundle = platform().bundle;
  const Folders &folders = platform().folders;
  const QString &name = bundle.executable.isEmpty() ? bundle.identifier : bundle.executable;
  if (folders.applicationSupport.isEmpty()) {
    return formatText(QStringLiteral("%@/Library/Application Support/%@/Log-%@-(%@).txt"),
                      {folders.home, name, bundle.shortVersion, bundle.version});
  }
  return formatText(QStringLiteral("%@/%@/Log-%@-(%@).txt"),
                    {folders.applicationSupport, name, bundle.shortVersion, bundle.version});
}

/// True if there is an open file. The reason for a failure is left in errno.
bool open(Log &log) {
  if (log.handle >= 0) return true;
  const QString path = logFilePath();
  const QByteArray name = QFile::encodeName(path);
  log.first = !QFileInfo::exists(path);
  if (log.first) QDir().mkpath(QFileInfo(path).path());
  log.handle = ::open(name.constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
  return log.handle >= 0;
}

/// Writes all or, on a full disk, takes the part back: a torn entry would spoil the next one.
bool writeWhole(int handle, const QByteArray &bytes) {
  struct stat before = {};
  const bool regular = ::fstat(handle, &before) == 0 && S_ISREG(before.st_mode);
  qsizetype written = 0;
  if (writeAll(handle, bytes, &written)) return true;
  const int reason = errno;
  if (regular && written > 0 && ::ftruncate(handle, before.st_size) != 0) return false;
  errno = reason;
  return false;
}

/// One write for a line, so that lines of several threads and processes do not mix.
void console(const QString &text) {
  const QByteArray line = text.toUtf8() + '\n';
  (void)!::write(STDERR_FILENO, line.constData(), size_t(line.size()));
}

void writeEntry(Log &log, const QString &message) {
  if (message.isNull() || !platform().clock || !open(log)) {
    console(u"BM> "_qs + (message.isNull() ? QStringLiteral("(null)") : message));
    return;
  }
  const auto milliseconds = qint64(std::floor(platform().clock->now().toUnix() * 1000.0));
  const QString time =
      QDateTime::fromMSecsSinceEpoch(milliseconds).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
  const QString entry = (log.first ? QString() : u"\n"_qs) + (u'[' + time + u"] "_qs) + message;
  if (writeWhole(log.handle, entry.toUtf8())) {
    log.first = false;
  } else {
    console(u"BM> "_qs + message);
  }
}

/// The archive takes the text's place only once it is whole.
void compressLog(Log &log, const QString &path) {
  const QFileInfo info(path);
  if (!info.exists()) return;
  QString error;
  if (!writeZipOfFile(info.path() + u'/' + info.completeBaseName() + u".zip"_qs, path, &error)) {
    BMLogMessage(u"!!! the log stays as text: "_qs + error);
    return;
  }
  log.close();
  QFile::remove(path);
}

}  // namespace

void BMLogMessage(const QString &message) noexcept {
  try {
    Log &state = log();
    const std::lock_guard guard(state.lock);
    try {
      writeEntry(state, message);
    } catch (const std::exception &exception) {
      console(message + u" (BMLog exc: "_qs + QString::fromUtf8(exception.what()) + u')');
    }
  } catch (...) {  // without memory even for the console
  }
}

QString logFilePath() {
  Log &state = log();
  const std::lock_guard guard(state.lock);
  if (state.path.isEmpty()) {
    state.path = computedPath();
    if (platform().preferences) {
      platform().preferences->setValue(platform().bundle.identifier, prefs::logDirectory,
                                       QFileInfo(state.path).path());
    }
  }
  return state.path;
}

void BMLogFlushFinal(bool compress) noexcept {
  try {
    Log &state = log();
    const std::lock_guard guard(state.lock);
    state.close();
    BMLog("BMLogFlushFinal %d", compress);
    if (compress) compressLog(state, logFilePath());
  } catch (...) {  // without memory the text stays, as after a crash
  }
}

void resetBMLog() {
  Log &state = log();
  const std::lock_guard guard(state.lock);
  state.close();
  state.path.clear();
}
