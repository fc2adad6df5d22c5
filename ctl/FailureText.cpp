#include "ctl/FailureText.h"

#include "ctl/Terminal.h"

QString textOf(const ScriptFailure &failure) {
  return QStringLiteral("error %1: %2").arg(failure.number.value_or(0)).arg(printable(failure.message));
}
