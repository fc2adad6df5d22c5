#pragma once

#include "ctl/Command.h"

class Options;

/// Tells what is known of audio files: kind, tag, pictures, audio. Changes nothing.
class TagsCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("tags"); }
  QString usage() const override { return QStringLiteral("FILE... [--json]"); }
  QString help() const override {
    return QStringLiteral("tells what is in audio files (./set for a file named \"set\")");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;

 private:
  int tell(const QStringList &files, bool asJson, Terminal &terminal) const;
};
