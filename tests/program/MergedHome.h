#pragma once

#include <QMap>
#include <QSet>
#include <random>

#include "tests/keeper/server/KeeperProcess.h"

/// A home with a library of songs in several copies, each a real file with audio of its own, with plays,
/// skips and playlists that hold the copies at places known beforehand; a keeper's process that serves it;
/// and the terminal's program that merges it.
class MergedHome : public KeeperProcess {
 protected:
  ~MergedHome() override;

  /// Makes the home anew and has a keeper take it in.
  void makeHome(int songs, std::mt19937 &random);
  /// A keeper serves, whoever started it.
  void ensureKeeper();
  void killKeeper();

  /// Starts the program on "merge --yes" with the policy of a number, 0 or 1.
  void startMerge(int policy);
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
  void collectAudio(const QString &folder, QSet<int> *audio) const;

  QByteArray journalAtStart;
};
