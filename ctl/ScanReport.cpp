#include "ctl/ScanReport.h"

#include "values/Keys.h"

namespace {

/// What stands for a row where whole rows are not wanted.
Value briefly(const Value &row, ProblemTab tab) {
  switch (tab) {
    case ProblemTab::Duplicates:
    case ProblemTab::Missing:
      return row.toDictionary().value(keys::PersistentID);
    case ProblemTab::Orphans:
      return row.toDictionary().value(keys::Path);
    default:
      return row;
  }
}

QString textOf(const Dictionary &row, Key key, const char *without) {
  const QString &text = row.value(key).toText();
  return text.isEmpty() ? QString::fromLatin1(without) : printable(text);
}

QString timeOf(const Dictionary &row) {
  const qint64 seconds = row.value(keys::TotalTime).toInteger() / 1000;
  return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QString sizeOf(const Dictionary &row) {
  constexpr double kKilobyte = 1.0e3, kMegabyte = 1.0e6;
  const double bytes = row.value(keys::Size).toDouble();
  return bytes < kMegabyte ? QStringLiteral("%1 kB").arg(bytes / kKilobyte, 0, 'f', 0)
                           : QStringLiteral("%1 MB").arg(bytes / kMegabyte, 0, 'f', 1);
}

QString titleOf(const Dictionary &row) {
  return textOf(row, keys::Artist, "(no artist)") + QStringLiteral(" - ") +
         textOf(row, keys::Name, "(no name)");
}

QString lineOf(const Dictionary &row) {
  return QStringLiteral("  %1  %2  %3  %4  %5")
      .arg(timeOf(row).rightJustified(6), textOf(row, keys::Kind, "(no kind)").leftJustified(20),
           QStringLiteral("%1 kbps").arg(row.value(keys::BitRate).toInteger()).rightJustified(9),
           sizeOf(row).rightJustified(9), textOf(row, keys::Path, "(no file)"));
}

QString counted(qsizetype count, const char *one, const char *many) {
  return QStringLiteral("%1 %2").arg(count).arg(QString::fromLatin1(count == 1 ? one : many));
}

}  // namespace

ScanReport::ScanReport(const AppState &state, std::optional<ProblemTab> onlyTab)
    : only(onlyTab), tracks(state.library.mMusicLibrarySortedTracks.size()) {
  for (const ProblemTab tab : kProblemTabs) lists[int(tab)] = state.lists[tab].copyMembers(true);
  Value group;
  for (const Value &row : lists[int(ProblemTab::Duplicates)]) {
    const Value &number = row.toDictionary().value(keys::DupeGroup);
    if (groups.empty() || !isEqual(number, group)) groups.push_back(Array::make());
    group = number;
    groups.back().append(row);
  }
}

bool ScanReport::hasProblems() const {
  return std::any_of(std::begin(kProblemTabs), std::end(kProblemTabs),
                     [&](ProblemTab tab) { return tellsOf(tab) && !lists[int(tab)].isEmpty(); });
}

void ScanReport::printJson(bool fullRows, Terminal &terminal) const {
  JsonWriter json(terminal.out);
  json.beginObject();
  json.member(u"tracks", qint64(tracks));
  for (const ProblemTab tab : kProblemTabs) {
    if (!tellsOf(tab)) continue;
    json.key(identifierOfTab(tab));
    if (tab == ProblemTab::Duplicates) {
      writeDuplicates(fullRows, &json);
      continue;
    }
    json.beginArray();
    for (const Value &row : lists[int(tab)]) json.value(fullRows ? row : briefly(row, tab));
    json.endArray();
  }
  json.endObject();
  json.endLine();
}

void ScanReport::writeDuplicates(bool fullRows, JsonWriter *json) const {
  json->beginArray();
  for (const Array &group : groups) {
    json->beginArray();
    for (const Value &row : group) json->value(fullRows ? row : briefly(row, ProblemTab::Duplicates));
    json->endArray();
  }
  json->endArray();
}

void ScanReport::print(Terminal &terminal) const {
  if (tellsOf(ProblemTab::Duplicates)) printGroups(terminal);
  for (const ProblemTab tab : {ProblemTab::Orphans, ProblemTab::Missing}) {
    if (!tellsOf(tab) || lists[int(tab)].isEmpty()) continue;
    terminal.print(tab == ProblemTab::Orphans ? QStringLiteral("Orphans") : QStringLiteral("Missing tracks"));
    for (const Value &row : lists[int(tab)])
      terminal.print(
          QStringLiteral("  %1  %2")
              .arg(titleOf(row.toDictionary()), textOf(row.toDictionary(), keys::Path, "(no file)")));
    terminal.print({});
  }
  printCounts(terminal);
}

void ScanReport::printGroups(Terminal &terminal) const {
  for (const Array &group : groups) {
    terminal.print(titleOf(group.at(0).toDictionary()));
    for (const Value &row : group) terminal.print(lineOf(row.toDictionary()));
    terminal.print({});
  }
}

void ScanReport::printCounts(Terminal &terminal) const {
  const auto count = [&](ProblemTab tab) { return lists[int(tab)].size(); };
  QStringList parts{counted(tracks, "track", "tracks")};
  if (tellsOf(ProblemTab::Duplicates))
    parts << counted(qsizetype(groups.size()), "group", "groups") + QStringLiteral(" of duplicates with ") +
                 counted(count(ProblemTab::Duplicates), "track", "tracks");
  // A kind of problem without rows may not have been looked for.
  const auto add = [&](ProblemTab tab, const char *one, const char *many) {
    if (tellsOf(tab) && count(tab) > 0) parts << counted(count(tab), one, many);
  };
  add(ProblemTab::Names, "inconsistent name", "inconsistent names");
  add(ProblemTab::Orphans, "orphan", "orphans");
  add(ProblemTab::Missing, "missing track", "missing tracks");
  terminal.print(parts.join(QStringLiteral(", ")));
}
