#include "ctl/MergeReporter.h"

#include "ctl/PlanMarks.h"
#include "ctl/RowText.h"
#include "support/SizeText.h"
#include "ui/MergeSummary.h"
#include "values/Keys.h"

namespace {

QString nameOf(UnkeptFate fate) {
  switch (fate) {
    case UnkeptFate::Trashed:
      return QStringLiteral("trash");
    case UnkeptFate::Moved:
      return QStringLiteral("folder");
    case UnkeptFate::AlreadyInFolder:
      return QStringLiteral("already in folder");
    case UnkeptFate::Deleted:
      return QStringLiteral("deleted");
    case UnkeptFate::Collected:
      return QStringLiteral("playlist");
    case UnkeptFate::Shared:
      return QStringLiteral("shared");
    case UnkeptFate::Gone:
      return QStringLiteral("gone");
    case UnkeptFate::NoPath:
      return QStringLiteral("no path");
  }
  return {};
}

QString policyName(int policy) {
  const bool isKnown = policy >= 0 && policy < int(std::size(kUnkeptPolicyNames));
  return isKnown ? kUnkeptPolicyNames[policy].toString() : QStringLiteral("none");
}

void writeTotals(const std::optional<MergeTotals> &totals, JsonWriter *json) {
  if (!totals) return json->value(Value());
  json->beginObject();
  json->member(u"tracks", totals->tracks);
  json->member(u"plays", totals->plays);
  json->member(u"skips", totals->skips);
  json->member(u"playlistEntries", totals->playlistEntries);
  json->member(u"files", totals->files);
  json->member(u"bytes", totals->bytes);
  json->endObject();
}

}  // namespace

void MergeReporter::printPlan(Terminal &terminal) const {
  for (const GroupPlan &group : plan.groups) printGroup(group, terminal);
  const qsizetype taken = planMarks::groupsToMerge(plan);
  const qsizetype left = qsizetype(plan.groups.size()) - taken;
  const bool holdPlaylists = std::any_of(plan.groups.begin(), plan.groups.end(),
                                         [](const GroupPlan &group) { return !group.playlists.empty(); });
  if (!plan.playlistsAreKnown && holdPlaylists)
    terminal.print(QStringLiteral("The playlists are told as the library's file has them."));
  terminal.print(QStringLiteral("%1 to merge, %2 to %3 (%4)")
                     .arg(rowText::counted(taken, "group", "groups"),
                          rowText::counted(plan.unkeptRows(), "copy", "copies"),
                          QString::fromLatin1(plan.settings.removesTracks() ? "remove" : "collect"),
                          sizeText(plan.unkeptBytes())));
  if (left > 0)
    terminal.print(rowText::counted(left, "group is", "groups are") +
                   QStringLiteral(" left out, as a file is missing"));
}

void MergeReporter::printGroup(const GroupPlan &group, Terminal &terminal) const {
  terminal.print(QStringLiteral("%1  (group %2)").arg(printable(group.title)).arg(group.number));
  if (group.missingPath) {
    terminal.print(
        QStringLiteral("  left out: this file is missing: ") +
        (group.missingPath->isEmpty() ? QStringLiteral("(no file)") : printable(*group.missingPath)));
    return terminal.print({});
  }
  const auto line = [&](const char *what, const QString &text) {
    terminal.print(QStringLiteral("  %1  %2").arg(QString::fromLatin1(what).leftJustified(11), text));
  };
  line("kept", rowText::textOf(group.audioRow, keys::Path, "(no file)"));
  if (group.copiesInformation())
    line("information", QStringLiteral("from ") + rowText::textOf(group.infoRow, keys::Path, "(no file)"));
  for (const GroupPlan::Unkept &file : group.unkept) {
    const QString path = file.path.isEmpty() ? file.pid : file.path;
    const QString size = file.bytes > 0 ? QStringLiteral("  (%1)").arg(sizeText(file.bytes)) : QString();
    line(nameOf(file.fate).toLatin1().constData(), printable(path) + size);
  }
  for (const GroupPlan::Playlist &playlist : group.playlists)
    line("in playlist", printable(playlist.name) +
                            (playlist.isHuge ? QStringLiteral("  (too long, so at its end)") : QString()));
  terminal.print({});
}

void MergeReporter::printOutcome(const MergeReport::Contents &outcome, Terminal &terminal) {
  const MergeSummary summary(outcome);
  terminal.print(summary.headline());
  for (const QString &line : summary.lines()) terminal.print(QStringLiteral("  ") + printable(line));
  for (const MergeFailure &failure : outcome.failures) {
    QStringList parts{printable(failure.title), printable(failure.path), printable(failure.reason)};
    parts.removeAll(QString());
    terminal.say(parts.join(QStringLiteral(": ")));
  }
}

void MergeReporter::printJson(const std::optional<MergeReport::Contents> &outcome, Terminal &terminal) const {
  JsonWriter json(terminal.out);
  json.beginObject();
  json.key(u"plan");
  writePlan(&json);
  json.key(u"outcome");
  if (outcome) {
    writeOutcome(*outcome, &json);
  } else {
    json.value(Value());
  }
  json.endObject();
  json.endLine();
}

void MergeReporter::writePlan(JsonWriter *json) const {
  json->beginObject();
  json->member(u"policy", policyName(plan.settings.policy));
  json->key(u"folder");
  json->textOrNull(plan.settings.is(UnkeptPolicy::Folder) ? plan.settings.unkeptFolder : QString());
  json->member(u"playlistsKnown", plan.playlistsAreKnown);
  json->key(u"groups");
  json->beginArray();
  for (const GroupPlan &group : plan.groups) writeGroup(group, json);
  json->endArray();
  json->member(u"rows", plan.unkeptRows());
  json->member(u"bytes", plan.unkeptBytes());
  json->endObject();
}

void MergeReporter::writeGroup(const GroupPlan &group, JsonWriter *json) {
  json->beginObject();
  json->member(u"group", group.number);
  json->member(u"title", group.title);
  json->member(u"kept", pidOf(group.audioRow));
  json->member(u"info", pidOf(group.infoRow));
  json->key(u"removed");
  json->beginArray();
  for (const GroupPlan::Unkept &file : group.unkept) {
    if (file.fate != UnkeptFate::Collected) json->value(file.pid);
  }
  json->endArray();
  json->key(u"files");
  json->beginArray();
  for (const GroupPlan::Unkept &file : group.unkept) {
    json->beginObject();
    json->member(u"pid", file.pid);
    json->key(u"path");
    json->textOrNull(file.path);
    json->member(u"bytes", file.bytes);
    json->member(u"fate", nameOf(file.fate));
    json->endObject();
  }
  json->endArray();
  json->key(u"playlists");
  json->beginArray();
  for (const GroupPlan::Playlist &playlist : group.playlists) {
    json->beginObject();
    json->member(u"pid", playlist.pid);
    json->member(u"name", playlist.name);
    json->member(u"entries", playlist.entries);
    json->member(u"huge", playlist.isHuge);
    json->endObject();
  }
  json->endArray();
  json->key(u"missing");
  json->value(group.missingPath ? Value(*group.missingPath) : Value());
  json->endObject();
}

void MergeReporter::writeMerged(const MergedGroup &group, JsonWriter *json) {
  json->beginObject();
  json->member(u"title", group.title);
  json->member(u"kept", group.keptPID);
  json->member(u"info", group.infoPID);
  json->member(u"path", group.keptPath);
  json->key(u"removed");
  json->beginArray();
  for (const MergedGroup::Unkept &file : group.unkept) {
    if (file.removed) json->value(file.pid);
  }
  json->endArray();
  json->key(u"files");
  json->beginArray();
  for (const MergedGroup::Unkept &file : group.unkept) {
    json->beginObject();
    json->member(u"pid", file.pid);
    json->key(u"path");
    json->textOrNull(file.path);
    json->key(u"newPath");
    json->textOrNull(file.newPath);
    json->member(u"bytes", file.bytes);
    json->member(u"fate", nameOf(file.fate));
    json->member(u"removed", file.removed);
    json->endObject();
  }
  json->endArray();
  json->key(u"playlists");
  json->beginArray();
  for (const QString &name : group.playlists) json->value(name);
  json->endArray();
  json->member(u"complete", group.complete);
  json->endObject();
}

void MergeReporter::writeOutcome(const MergeReport::Contents &outcome, JsonWriter *json) {
  json->beginObject();
  json->key(u"groups");
  json->beginArray();
  for (const MergedGroup &group : outcome.groups) writeMerged(group, json);
  json->endArray();
  json->key(u"totals");
  json->beginObject();
  json->key(u"before");
  writeTotals(outcome.before, json);
  json->key(u"after");
  writeTotals(outcome.after, json);
  json->endObject();
  json->key(u"failures");
  json->beginArray();
  for (const MergeFailure &failure : outcome.failures) {
    json->beginObject();
    json->member(u"title", failure.title);
    json->key(u"path");
    json->textOrNull(failure.path);
    json->member(u"reason", failure.reason);
    json->endObject();
  }
  json->endArray();
  json->endObject();
}
