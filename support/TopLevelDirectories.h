#pragma once

#include <QString>
#include <QStringList>
#include <utility>
#include <vector>

namespace BMUtility {

/// How many of the paths lie under each of the smallest set of common top folders, in the order in which the
/// folders were found; empty if there is none. Each path's folder is cut behind each of `stopFragments` found
/// in it; a folder shorter than `minComponents` parts is not shortened further.
std::vector<std::pair<QString, qsizetype>> topLevelDirectoriesFromPathsStopFragmentsMinComponents(
    const std::vector<QString> &paths, const QStringList &stopFragments, qsizetype minComponents);

}  // namespace BMUtility
