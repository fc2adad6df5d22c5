#pragma once

#include "ctl/Command.h"
#include "ctl/TagEdits.h"

/// Changes the tag of an audio file, or of a new copy of it, in the same way as the application writes tags.
class TagsSetCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("tags set"); }
  QString usage() const override {
    return QStringLiteral("FILE [OUT] ") + TagEdits::usage() + QStringLiteral(" [--json]");
  }
  QString help() const override {
    return QStringLiteral("changes a file's tag, or that of a new copy OUT, in the order given");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;
};
