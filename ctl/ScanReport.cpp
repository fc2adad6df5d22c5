#include "ctl/ScanReport.h"

#include "app/library/CalculatedValues.h"
#include "ctl/NamesReport.h"
#include "ctl/RowText.h"
#include "values/Keys.h"

using rowText::counted;

namespace {

void writeRow(const Value &row, ProblemTab tab, bool fullRows, JsonWriter *json) {
  if (fullRows) return json->value(CalculatedValues::objectWithCalculatedValuesRemoved(row));
  if (tab == ProblemTab::Names) return NamesReport(row.toDictionary()).writeJson(json);
  json->value(row.toDictionary().value(tab == ProblemTab::Orphans ? keys::Path : keys::PersistentID));
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

bool ScanReport::print(const Options &options, Terminal &terminal) const {
  if (options.wantsJson()) {
    printJson(options.has(QStringLiteral("--rows")), terminal);
  } else {
    printText(terminal);
  }
  return hasProblems();
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
    for (const Value &row : lists[int(tab)]) writeRow(row, tab, fullRows, &json);
    json.endArray();
  }
  json.endObject();
  json.endLine();
}

void ScanReport::writeDuplicates(bool fullRows, JsonWriter *json) const {
  json->beginArray();
  for (const Array &group : groups) {
    json->beginArray();
    for (const Value &row : group) writeRow(row, ProblemTab::Duplicates, fullRows, json);
    json->endArray();
  }
  json->endArray();
}

void ScanReport::printText(Terminal &terminal) const {
  if (tellsOf(ProblemTab::Duplicates)) printGroups(terminal);
  if (tellsOf(ProblemTab::Names)) printNames(terminal);
  for (const ProblemTab tab : {ProblemTab::Orphans, ProblemTab::Missing}) {
    if (!tellsOf(tab) || lists[int(tab)].isEmpty()) continue;
    terminal.print(tab == ProblemTab::Orphans ? QStringLiteral("Orphans") : QStringLiteral("Missing tracks"));
    for (const Value &row : lists[int(tab)])
      terminal.print(QStringLiteral("  %1  %2")
                         .arg(rowText::titleOf(row.toDictionary()),
                              rowText::textOf(row.toDictionary(), keys::Path, "(no file)")));
    terminal.print({});
  }
  printCounts(terminal);
}

void ScanReport::printGroups(Terminal &terminal) const {
  for (const Array &group : groups) {
    terminal.print(rowText::titleOf(group.at(0).toDictionary()));
    for (const Value &row : group) terminal.print(QStringLiteral("  ") + rowText::lineOf(row.toDictionary()));
    terminal.print({});
  }
}

void ScanReport::printNames(Terminal &terminal) const {
  for (const Value &row : lists[int(ProblemTab::Names)]) NamesReport(row.toDictionary()).print(terminal);
}

void ScanReport::printCounts(Terminal &terminal) const {
  const auto count = [&](ProblemTab tab) { return lists[int(tab)].size(); };
  QStringList parts{counted(tracks, "track", "tracks")};
  if (tellsOf(ProblemTab::Duplicates))
    parts << counted(qsizetype(groups.size()), "group", "groups") + QStringLiteral(" of duplicates with ") +
                 counted(count(ProblemTab::Duplicates), "track", "tracks");
  if (tellsOf(ProblemTab::Names))
    parts << counted(count(ProblemTab::Names), "inconsistent name", "inconsistent names");
  // A kind of problem without rows may not have been looked for.
  const auto add = [&](ProblemTab tab, const char *one, const char *many) {
    if (tellsOf(tab) && count(tab) > 0) parts << counted(count(tab), one, many);
  };
  add(ProblemTab::Orphans, "orphan", "orphans");
  add(ProblemTab::Missing, "missing track", "missing tracks");
  terminal.print(parts.join(QStringLiteral(", ")));
}
