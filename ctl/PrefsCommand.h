#pragma once

#include "ctl/Command.h"

/// Shows and changes the settings that both programs share.
class PrefsCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("prefs"); }
  QString usage() const override {
    return QStringLiteral("list|get KEY|set KEY VALUE|unset KEY|reset [--json]");
  }
  QString help() const override { return QStringLiteral("shows or changes the settings"); }
  int run(const QStringList &arguments, Terminal &terminal) override;

 private:
  int list(bool asJson, Terminal &terminal) const;
  int get(const QString &key, bool asJson, Terminal &terminal) const;
  int set(const QString &key, const QString &text, Terminal &terminal) const;
  int unset(const QString &key, Terminal &terminal) const;
  int reset(Terminal &terminal) const;
};
