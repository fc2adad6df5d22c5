#pragma once

#include "ctl/Command.h"

/// Answers which rows of made-up groups the marks would fall on. Reads one JSON object, {"rows": [...],
/// "prefs": {...}, "kinds": {...}}: adjacent rows of one "DupeGroup" form a group, a "Date Added" is an ISO
/// text or a number of seconds since 2001, and absent settings and kinds are none. Writes a JSON array with
/// the indexes in "rows" of each group's two rows, [INFORMATION, AUDIO].
class InspectAutomarkCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("inspect automark"); }
  QString usage() const override { return QStringLiteral("[FILE]"); }
  QString help() const override {
    return QStringLiteral("chooses the marks of given rows, from a file or standard input");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;
};
