#include "ctl/MergeRequest.h"

#include <QDir>

#include "ctl/Terminal.h"
#include "repairs/MergeSettings.h"
#include "support/PreferenceKeys.h"

namespace {

const QString kDryRun = QStringLiteral("--dry-run"), kYes = QStringLiteral("--yes");
const QString kNoPlaylists = QStringLiteral("--no-playlists"), kNoCounts = QStringLiteral("--no-counts");
const QString kGroup = QStringLiteral("--group"), kPolicy = QStringLiteral("--policy");
const QString kFolder = QStringLiteral("--folder");

/// The number of a policy by its name; that of none if there is no such policy.
int policyOf(const QString &name) {
  const auto found = std::find(std::begin(kUnkeptPolicyNames), std::end(kUnkeptPolicyNames), name);
  return int(found - std::begin(kUnkeptPolicyNames));
}

/// The groups by their numbers; nothing with a line in `error` for what is no number.
std::optional<std::vector<qint64>> groupsOf(const QStringList &texts, QString *error) {
  std::vector<qint64> groups;
  for (const QString &text : texts) {
    bool isNumber = false;
    groups.push_back(text.toLongLong(&isNumber));
    if (isNumber && groups.back() > 0) continue;
    *error = QStringLiteral("--group takes a group's number, not \"%1\"").arg(printable(text));
    return std::nullopt;
  }
  return groups;
}

}  // namespace

QStringList MergeRequest::flagNames() {
  return {kDryRun, kYes, kNoPlaylists, kNoCounts};
}

QStringList MergeRequest::valueNames() {
  return {kGroup, kPolicy, kFolder};
}

QString MergeRequest::usage() {
  return QStringLiteral(
      "[--dry-run] [--group N]... [--policy trash|folder|playlist] [--folder DIR] [--no-playlists] "
      "[--no-counts] [--yes]");
}

bool MergeRequest::take(const Options &options, ScanRequest *scan, QString *error) {
  dryRun = options.has(kDryRun);
  yes = options.has(kYes);
  if (options.has(kGroup)) groups = groupsOf(options.values(kGroup), error);
  const bool hasFolder = options.has(kFolder);
  // A folder alone says enough.
  const int policy = options.has(kPolicy) ? policyOf(options.value(kPolicy)) : int(UnkeptPolicy::Folder);
  const bool hasPolicy = options.has(kPolicy) || hasFolder;
  if (policy == int(std::size(kUnkeptPolicyNames)))
    *error = QStringLiteral("--policy is trash, folder or playlist");
  if (hasFolder && policy != int(UnkeptPolicy::Folder))
    *error = QStringLiteral("--folder goes with --policy folder");
  if (dryRun && yes) *error = QStringLiteral("--dry-run and --yes contradict each other");
  if (yes && !scan->library.isEmpty())
    *error = QStringLiteral("a library named with --library can only be looked at, with --dry-run");
  if (!error->isEmpty()) return false;
  if (hasPolicy) scan->settings.emplace_back(prefs::unkeptActionPolicy, policy);
  if (hasFolder) scan->settings.emplace_back(prefs::unkeptPath, QDir(options.value(kFolder)).absolutePath());
  if (options.has(kNoPlaylists)) scan->settings.emplace_back(prefs::noIntelligentPlaylistHandling, true);
  if (options.has(kNoCounts)) scan->settings.emplace_back(prefs::noMergePlayedInfo, true);
  // The plan tells it, and it is agreed to before the merge begins.
  scan->settings.emplace_back(prefs::noWarnAboutUnkeptTrash, true);
  scan->settings.emplace_back(prefs::noWarnBigPlaylists, true);
  return true;
}
