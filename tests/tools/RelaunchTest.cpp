#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace {

/// The tool with an application that leaves a note of its start, and processes to wait for.
class Relaunch : public ::testing::Test {
 protected:
  Relaunch() : application(folder.filePath(u"an application"_qs)), note(folder.filePath(u"started"_qs)) {
    QFile file(application);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\nprintf '%s ' $# $(ps -o sid= -p $$) > '" + QFile::encodeName(note) + "'\n");
    file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  }

  void start(const QStringList &arguments) {
    tool.setProgram(QStringLiteral(RELAUNCH));
    tool.setArguments(arguments);
    tool.start();
    ASSERT_TRUE(tool.waitForStarted());
  }
  int exitCode() { return tool.waitForFinished(20000) ? tool.exitCode() : -1; }
  bool hasStarted() const {
    QElapsedTimer timer;
    for (timer.start(); !QFile::exists(note) && timer.elapsed() < 10000;) ::usleep(5000);
    return QFile::exists(note);
  }

  QTemporaryDir folder;
  const QString application, note;
  QProcess tool;
};

}  // namespace

TEST_F(Relaunch, TheApplicationStartsOnceTheProcessHasEnded) {
  // One that its parent has not collected yet has ended too.
  const pid_t process = ::fork();
  if (process == 0) {
    ::pause();
    ::_exit(0);
  }
  start({application, QString::number(process)});
  EXPECT_FALSE(tool.waitForFinished(300));
  EXPECT_FALSE(QFile::exists(note)) << "both ran at once";
  ::kill(process, SIGKILL);
  EXPECT_EQ(exitCode(), 0);
  EXPECT_TRUE(hasStarted());
  QFile file(note);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QList<QByteArray> told = file.readAll().simplified().split(' ');
  EXPECT_EQ(told.first(), "0") << "arguments nobody asked for";
  EXPECT_NE(told.last().toInt(), ::getsid(0)) << "the application dies with the terminal";
}

TEST_F(Relaunch, ANumberThatIsGivenToAnotherProcessIsNotWaitedFor) {
  // Younger than the tool, so not what started it: the tool is held back until the number has a new owner.
  QProcess held;
  held.start(u"/bin/sh"_qs, {u"-c"_qs, u"read number; exec \"$0\" \"$1\" $number"_qs,
                             QStringLiteral(RELAUNCH), application});
  ASSERT_TRUE(held.waitForStarted());
  ::usleep(50000);
  QProcess stranger;
  stranger.start(u"/bin/sleep"_qs, {u"60"_qs});
  ASSERT_TRUE(stranger.waitForStarted());
  held.write(QByteArray::number(stranger.processId()) + '\n');
  EXPECT_TRUE(held.waitForFinished(10000));
  EXPECT_TRUE(hasStarted());
  stranger.kill();
  stranger.waitForFinished();
}

TEST_F(Relaunch, WrongUseStartsNothing) {
  const QString gone = QString::number(0x3fffffff);
  const QList<QStringList> cases = {{},
                                    {application},
                                    {application, gone, gone},
                                    {application, QString()},
                                    {application, u"0"_qs},
                                    {application, u"1"_qs},
                                    {application, u"-5"_qs},
                                    {application, u"12x"_qs},
                                    {application, u"99999999999999999999"_qs},
                                    {u"an application"_qs, gone},
                                    {QString(), gone}};
  for (const QStringList &arguments : cases) {
    start(arguments);
    EXPECT_EQ(exitCode(), 2) << arguments.join(u' ').toStdString();
    EXPECT_TRUE(tool.readAllStandardError().contains("usage: relaunch"));
  }
  EXPECT_FALSE(QFile::exists(note));
}

TEST_F(Relaunch, AnApplicationThatCannotBeStartedIsTold) {
  const QString gone = QString::number(0x3fffffff);
  QFile::setPermissions(application, QFile::ReadOwner);
  for (const QString &path : {application, folder.filePath(u"nothing"_qs)}) {
    start({path, gone});
    EXPECT_EQ(exitCode(), 1);
    EXPECT_TRUE(tool.readAllStandardError().contains("cannot be started"));
  }
}
