#pragma once

#include <sstream>

#include "ctl/CommandTable.h"
#include "ctl/ScanCommand.h"
#include "tests/fixtures/TestPlatform.h"

/// Runs commands in this process with buffers in place of the streams, in virtual time.
class CommandFixture : public TestPlatform {
 protected:
  CommandFixture();
  ~CommandFixture() override;

  /// Runs a command line ("prefs get busy", split at blanks) on `input`; fills `out` and `err`.
  int run(const QString &line, const std::string &input = {});
  /// Runs the scan with arguments, interrupting it when `interruptWhen` first holds.
  int scan(const QStringList &arguments, std::function<bool()> interruptWhen = {});
  /// The same with another command that scans.
  template <class Scanning>
  int scanWith(const QStringList &arguments, std::function<bool()> interruptWhen = {}) {
    Scanning command(virtualLoop(std::move(interruptWhen)));
    return runScanning(command, arguments);
  }

  /// Writes a library of tracks, each given as XML behind a "Persistent ID" made of its place from 1 on and
  /// with a file music/<place>.mp3 for "FILE". Answers its path.
  QString writeLibrary(const QStringList &tracks, const QString &path = QStringLiteral("library.xml"));
  /// A track's XML as `writeLibrary` takes it.
  static QString track(const QString &artist, const QString &name, int seconds = 200,
                       const QString &more = {});

  std::string out, err;
  bool isTerminal = false;
  /// A person answers questions; of `run` only.
  bool isAnswering = false;

 private:
  int runScanning(Command &command, const QStringList &arguments);
  LoopRunner virtualLoop(std::function<bool()> interruptWhen);
};
