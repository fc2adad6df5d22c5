#pragma once

#include <optional>
#include <vector>

#include "app/state/AppState.h"
#include "repairs/MergePlan.h"

/// The marks of the listed rows, brought into line with what is to be merged. Main thread, no worker running.
namespace planMarks {

/// Takes the marks from all groups but those of these numbers; from none without numbers. Answers the numbers
/// that no group has.
[[nodiscard]] std::vector<qint64> keepGroups(AppState &state,
                                             const std::optional<std::vector<qint64>> &numbers);

/// Takes the marks from the plan's groups of which a marked file is gone: a merge would stop at them.
void leaveOutGroupsWithoutFiles(const MergePlan &plan, AppState &state);

/// Marks the rows as the plan has them, and no others: a second scan may choose otherwise between copies that
/// are alike.
void markAsIn(const MergePlan &plan, AppState &state);

/// The groups that take part: no marked file of theirs is gone.
qsizetype groupsToMerge(const MergePlan &plan);

/// True if the same tracks go into the same tracks, whatever the order of the groups and their rows.
bool areSame(const MergePlan &one, const MergePlan &other);

}  // namespace planMarks
