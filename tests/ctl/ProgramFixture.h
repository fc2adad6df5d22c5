#pragma once

#include <QProcess>

#include "tests/ctl/CommandFixture.h"

/// The program itself, from outside, in a home folder of its own.
class ProgramFixture : public CommandFixture {
 protected:
  void start(QProcess *process, const QStringList &arguments) const;
  /// Runs it to its end; fills `out` and `err` and answers the exit code.
  int execute(const QStringList &arguments, const QByteArray &input = {});
  static QStringList words(const char *line) { return QString::fromUtf8(line).split(u' '); }
};
