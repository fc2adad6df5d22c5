#pragma once

#include "ctl/Command.h"
#include "platform/keeper/KeeperPlace.h"
#include "platform/keeper/KeeperProtocol.h"

class Options;

/// Looks after Music Keeper, the music application of this system: whether it runs, what it holds, and its
/// settings.
class KeeperCommand : public Command {
 public:
  KeeperCommand();

  QString name() const override { return QStringLiteral("keeper"); }
  QString usage() const override {
    return QStringLiteral(
        "status [--json]|start|stop|import FILE [--map OLD=NEW]...|export FILE|settings [KEY [VALUE]]");
  }
  QString help() const override {
    return QStringLiteral("starts, stops or asks Music Keeper, or brings its library in and out");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;

 private:
  int status(bool asJson, Terminal &terminal) const;
  int importFile(const QString &file, const QStringList &mapping, Terminal &terminal) const;
  int exportFile(const QString &file, Terminal &terminal) const;
  /// Has the keeper that serves do it, or a keeper that is started for it alone.
  int transfer(const keeperProtocol::Request &request, const QStringList &arguments,
               Terminal &terminal) const;

  const KeeperPlace place;
};
