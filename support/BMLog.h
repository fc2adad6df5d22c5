#pragma once

#include "support/Format.h"

/// Writes one ready message to the log, or to the console if it is null. What `BMLog` stands on.
void BMLogMessage(const QString &message) noexcept;

/// Formats (see support/Format.h) and writes one entry to the log of this version of the application: at
/// once, from any thread, entries whole. Never throws; a log that cannot be written costs only the log, and
/// the message goes to the console as "BM> ...".
template <class... A>
void BMLog(const char *format, const A &...arguments) noexcept {
  try {
    BMLogMessage(format ? formatText(QString::fromUtf8(format), {FormatArgument(arguments)...}) : QString());
  } catch (...) {  // out of memory: there is nothing left to say it with
  }
}

/// Closes the log at the end of the process, with a line of its own as the last. With `compress` the text is
/// replaced by a zip archive beside it, which takes the place of an older one; if the archive cannot be made
/// the text stays. A later entry opens the file anew.
void BMLogFlushFinal(bool compress) noexcept;

/// Where the log of this version is; computed once, its folder noted in the preference "logDirectory". Any
/// thread.
QString logFilePath();

/// Forgets the path and closes the file, for a fresh start on another platform (each test's).
void resetBMLog();
