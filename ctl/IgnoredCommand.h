#pragma once

#include "ctl/Command.h"

class Declarations;

/// Shows or forgets which tracks of a library were declared not to be duplicates.
class IgnoredCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("ignored"); }
  QString usage() const override;
  QString help() const override {
    return QStringLiteral("lists or forgets what \"ignore\" and the window were told");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;

 private:
  int list(Declarations &declarations, bool asJson, Terminal &terminal) const;
  int clear(Declarations &declarations, bool isAgreed, Terminal &terminal) const;
};
