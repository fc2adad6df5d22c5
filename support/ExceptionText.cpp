#include "support/ExceptionText.h"

#include <exception>

QString currentExceptionText() {
  try {
    throw;
  } catch (const std::exception &exception) {
    return QString::fromUtf8(exception.what());
  } catch (...) {
    return QStringLiteral("unknown exception");
  }
}
