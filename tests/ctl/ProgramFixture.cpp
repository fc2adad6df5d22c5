#include "tests/ctl/ProgramFixture.h"

#include <QProcessEnvironment>

void ProgramFixture::start(QProcess *process, const QStringList &arguments) const {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("HOME"), folder(QStringLiteral("home")));
  environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder(QStringLiteral("home/.config")));
  environment.insert(QStringLiteral("XDG_DATA_HOME"), folder(QStringLiteral("home/.data")));
  process->setProcessEnvironment(environment);
  process->start(QStringLiteral(TALLYFENCTL), arguments);
}

int ProgramFixture::execute(const QStringList &arguments, const QByteArray &input) {
  QProcess process;
  start(&process, arguments);
  process.write(input);
  process.closeWriteChannel();
  EXPECT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
  out = process.readAllStandardOutput().toStdString();
  err = process.readAllStandardError().toStdString();
  return process.exitCode();
}
