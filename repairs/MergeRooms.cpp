#include "repairs/MergeRooms.h"

#include "app/state/AppState.h"

bool MergeRooms::isCancelled() const {
  return state.operation.mCancelOperation;
}

void MergeRooms::fail(const QString &path, const QString &reason) const {
  state.merge.report.addFailure({state.operation.currentActionTitle(), path, reason});
}
