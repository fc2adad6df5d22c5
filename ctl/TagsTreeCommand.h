#pragma once

#include "ctl/Command.h"

/// Shows how an audio file is laid out: the atoms of an MP4 file, the frames of an MPEG file's tag.
class TagsTreeCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("tags tree"); }
  QString usage() const override { return QStringLiteral("FILE"); }
  QString help() const override {
    return QStringLiteral("shows a file's atoms with their places and sizes, or its tag's frames");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;
};
