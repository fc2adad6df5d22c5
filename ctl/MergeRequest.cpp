#include "ctl/MergeRequest.h"

#include <QDir>

#include "repairs/MergeSettings.h"
#include "support/PreferenceKeys.h"

namespace {

const QString kDryRun = QStringLiteral("--dry-run"), kYes = QStringLiteral("--yes");
const QString kNoPlaylists = QStringLiteral("--no-playlists"), kNoCounts = QStringLiteral("--no-counts");
const QString kGroup = QStringLiteral("--group"), kPolicy = QStringLiteral("--policy");
const QString kFolder = QStringLiteral("--folder");

std::optional<UnkeptPolicy> policyOf(const QString &name) {
  if (name == u"trash") return UnkeptPolicy::Trash;
  if (name == u"folder") return UnkeptPolicy::Folder;
  if (name == u"playlist") return UnkeptPolicy::Playlist;
  return std::nullopt;
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
  for (const QString &text : options.values(kGroup)) {
    bool isNumber = false;
    groups.push_back(text.toLongLong(&isNumber));
    if (isNumber && groups.back() > 0) continue;
    *error = QStringLiteral("--group takes a group's number, not \"%1\"").arg(text);
    return false;
  }
  const bool hasFolder = options.has(kFolder);
  const std::optional<UnkeptPolicy> policy =
      options.has(kPolicy) ? policyOf(options.value(kPolicy))
                           : (hasFolder ? std::optional(UnkeptPolicy::Folder) : std::nullopt);
  if (options.has(kPolicy) && !policy) *error = QStringLiteral("--policy is trash, folder or playlist");
  if (hasFolder && policy && *policy != UnkeptPolicy::Folder)
    *error = QStringLiteral("--folder goes with --policy folder");
  if (dryRun && yes) *error = QStringLiteral("--dry-run and --yes contradict each other");
  if (yes && !scan->library.isEmpty())
    *error = QStringLiteral("a library named with --library can only be looked at, with --dry-run");
  if (!error->isEmpty()) return false;
  if (policy) scan->settings.emplace_back(prefs::unkeptActionPolicy, int(*policy));
  if (hasFolder) scan->settings.emplace_back(prefs::unkeptPath, QDir(options.value(kFolder)).absolutePath());
  if (options.has(kNoPlaylists)) scan->settings.emplace_back(prefs::noIntelligentPlaylistHandling, true);
  if (options.has(kNoCounts)) scan->settings.emplace_back(prefs::noMergePlayedInfo, true);
  // The plan tells it, and it is agreed to before the merge begins.
  scan->settings.emplace_back(prefs::noWarnAboutUnkeptTrash, true);
  scan->settings.emplace_back(prefs::noWarnBigPlaylists, true);
  return true;
}
