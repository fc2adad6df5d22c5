#pragma once

#include <QMap>
#include <QSet>
#include <random>

#include "tests/keeper/server/KeeperProcess.h"

/// A home with a library of songs in several copies, each a real file with audio of its own, with plays,
/// skips and playlists that hold the copies at places known beforehand; a keeper's process that serves it;
/// and the two programs that merge it: the terminal's, and the window's with a quick clock.
class MergedHome : public KeeperProcess {
 protected:
  /// Ends every process of the home.
  ~MergedHome() override;

  /// Makes the home anew and has a keeper take it in.
  void makeHome(int songs, std::mt19937 &random);
  /// A keeper serves, whoever started it.
  void ensureKeeper();
  void killKeeper();

  /// Starts the terminal's program on "merge --yes" with the policy of a number, 0 or 1.
  void startMerge(int policy);
  /// The same with the window's program. An argument stands for the tool that opens it again.
  void startWindow(int policy, const QStringList &arguments = {});
  /// What the window's programs of this home have told, a line each: "launch", "scan", "alert KEY", "sheet
  /// KEY", "failure PATH: REASON", and at the very end "end tracks N plays N files N".
  QStringList windowTold() const;
  /// Where the window's program puts the state of a merge that is stuck.
  QString statePath() const { return path(QStringLiteral("home/com.brinmoor.tallyfen.state.plist")); }
  /// The processes of this home that run a program with this path; all of them for an empty one.
  std::vector<pid_t> processesOf(const char *executable) const;
  /// Waits until the merge moves the first counts, or has ended.
  void waitForFirstSteps();
  /// Waits for the merge's end: its exit code, -1 if a signal ended it. Fails if it goes on for minutes.
  int waitForMerge();
  void killMerge();
  /// Merges and scans until nothing is left to be merged. Expects no failure.
  void mergeToTheEnd(int policy);

  /// Where everything stands. Songs have numbers.
  struct Holdings {
    QSet<int> audio;
    QSet<int> playable;
    QMap<QString, QList<int>> playlists;
    qint64 plays = 0, skips = 0;
    qsizetype tracks = 0, tracksWithFile = 0;
  };
  Holdings holdings();
  /// What holds at any instant: no audio is lost, and each song has a track whose file stands.
  void expectSongsStand();
  /// What holds once all is merged: places in playlists and plays too, and one track for each song.
  void expectNothingLost();

  Holdings before;
  QProcess program;
  /// What the program has said, on both streams.
  QByteArray told;

 private:
  QString musicFolder() const { return libraryFolder() + QStringLiteral("/iTunes Media/Music"); }
  QString unkeptFolder() const { return path(QStringLiteral("unkept")); }
  QByteArray journal() const;
  void begin(const QString &executable, const QStringList &arguments);
  void killAll();
  void collectAudio(const QString &folder, QSet<int> *audio) const;

  QByteArray journalAtStart;
};
