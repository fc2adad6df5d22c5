#include "app/state/MergeState.h"

void MergeReport::clear() {
  std::lock_guard hold(guard);
  mContents = {};
  wrongTotals.clear();
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
  Contents all = mContents;
  all.failures.insert(all.failures.end(), wrongTotals.begin(), wrongTotals.end());
  return all;
}

void MergeReport::setBefore(const std::optional<MergeTotals> &totals) {
  std::lock_guard hold(guard);
  mContents.before = totals;
}

void MergeReport::setAfter(const std::optional<MergeTotals> &totals, std::vector<MergeFailure> wrong) {
  std::lock_guard hold(guard);
  mContents.after = totals;
  wrongTotals = std::move(wrong);
}
