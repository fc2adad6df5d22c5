#include "app/state/MergeState.h"

void MergeReport::clear() {
  std::lock_guard hold(guard);
  mContents = {};
}

void MergeReport::addGroup(MergedGroup group) {
  std::lock_guard hold(guard);
  mContents.groups.push_back(std::move(group));
}

void MergeReport::addFailure(MergeFailure failure) {
  std::lock_guard hold(guard);
  mContents.failures.push_back(std::move(failure));
}

MergeReport::Contents MergeReport::contents() const {
  std::lock_guard hold(guard);
  return mContents;
}

void MergeReport::setBefore(const std::optional<MergeTotals> &totals) {
  std::lock_guard hold(guard);
  mContents.before = totals;
}

void MergeReport::setAfter(const std::optional<MergeTotals> &totals) {
  std::lock_guard hold(guard);
  mContents.after = totals;
}
