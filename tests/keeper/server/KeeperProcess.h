#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <functional>

#include "platform/keeper/KeeperScriptHost.h"
#include "platform/keeper/KeeperStatus.h"

/// The real program in a home and a runtime folder of the test's own.
class KeeperProcess : public ::testing::Test {
 protected:
  KeeperProcess();
  ~KeeperProcess() override;

  QString path(const QString &relative) const { return temporary.path() + u'/' + relative; }
  QString libraryFolder() const { return path(QStringLiteral("home/Music/iTunes")); }
  QString storePath() const;
  QString exportPath() const { return libraryFolder() + QStringLiteral("/iTunes Music Library.xml"); }
  void writeFile(const QString &path, const QByteArray &bytes) const;
  static QByteArray readFile(const QString &path);
  /// A library file of so many tracks, "Name 1" by "Artist" and so on, with a playlist "P" of all of them.
  static QByteArray libraryXml(int tracks);

  /// Starts it and waits until it answers.
  void start(const QStringList &arguments = {});
  /// Starts another and waits for its end: the exit code. What it said is in `said`.
  int runToEnd(const QStringList &arguments);
  void killNow();
  /// Asks it to quit and waits for its end: the exit code.
  int quit();
  /// The end of the one that was started: the exit code, -1 if a signal ended it, -2 if it goes on.
  int waitForEnd();

  /// Runs a script in it; its text, or "error NUMBER".
  QString run(const QString &script);
  /// The same for one command to it.
  QString tell(const QString &command);
  std::optional<keeperProtocol::Status> status(int milliseconds = 10000) const;
  /// Asks again and again until it holds, and serves events meanwhile; false after so many seconds.
  static bool eventually(const std::function<bool()> &holds, int seconds = 30);

  QTemporaryDir temporary;
  const KeeperPlace place;
  KeeperScriptHost host;
  QProcess process;
  std::string said;
};
