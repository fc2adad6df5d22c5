#include "desktop/GuardedApplication.h"

#include <execinfo.h>

#include "desktop/Icons.h"

GuardedApplication::GuardedApplication(int &count, char **arguments) : QApplication(count, arguments) {
  setApplicationName(QStringLiteral("Tallyfen"));
  setDesktopFileName(QStringLiteral("tallyfen"));
  setStyle(QStringLiteral("Fusion"));
  setWindowIcon(icons::application());
  // The controller ends the application, in its own order.
  setQuitOnLastWindowClosed(false);
}

int GuardedApplication::run() {
  const int code = exec();
  if (escaped) std::rethrow_exception(escaped);
  return code;
}

bool GuardedApplication::notify(QObject *receiver, QEvent *event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (...) {
    if (!escaped) escaped = std::current_exception();
    exit(1);
    return true;
  }
}

QString describeException(const std::exception_ptr &exception) {
  try {
    std::rethrow_exception(exception);
  } catch (const std::exception &known) {
    return QString::fromUtf8(known.what());
  } catch (...) {
    return QStringLiteral("unknown exception");
  }
}

QStringList callStackSymbols() {
  constexpr int kMostFrames = 64;
  void *frames[kMostFrames];
  const int count = ::backtrace(frames, kMostFrames);
  QStringList lines;
  if (char **symbols = ::backtrace_symbols(frames, count)) {
    for (int i = 0; i < count; ++i) lines.append(QString::fromLocal8Bit(symbols[i]));
    ::free(symbols);
  }
  return lines;
}
