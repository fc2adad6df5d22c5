#include "app/state/Operation.h"

#include "app/state/AppState.h"
#include "bridge/LocalizedMessage.h"
#include "platform/Platform.h"
#include "support/Preferences.h"

Operation::~Operation() {
  stopTimer();
}

bool Operation::isBusy() const {
  return mUpdateProgressTimer != 0 || prefs::isTrue(prefs::busy);
}

void Operation::reserve() {
  prefs::set(prefs::busy, true);
  OperationState &operation = state.operation;
  operation.mCancelOperation = false;
  operation.mCompletedOperation = false;
  operation.mCompletedFindMissingAndOrphans = false;
  operation.mCompletedFindInconsistentNames = false;
  operation.mNumberOfCompletedItems = 0;
  operation.mCurrentThreadAction = 0;
  operation.setCancelOperationReason({});
  operation.mEncounteredErrors = Array::make();
  operation.setCurrentActionTitle({});
  state.view.setProgressSubText({});
}

void Operation::abandon() {
  prefs::remove(prefs::busy);
}

void Operation::start(const OperationPlan &plan) {
  ProblemView &view = state.view;
  mMaximum = plan.maximum;
  view.setProgressMaximum(plan.maximum);
  view.setProgressText(plan.text);
  view.setProgressQuote(plan.quote);
  view.setProgressValue(0.0);
  plan.update();
  if (plan.beforeSheet) plan.beforeSheet();
  sheet.displayProgressSheet();
  state.operation.mLastCompletedCount = 0;
  stopTimer();
  mUpdateProgressTimer = platform().mainLoop->startTimer(plan.tickSeconds, true, plan.update);
  if (plan.beforeWorkers) plan.beforeWorkers();
  for (const OperationPlan::Worker &worker : plan.workers) {
    if (state.workers.detach(worker.name, worker.body)) continue;
    state.operation.setCancelOperationReason(localizedMessage(QStringLiteral("NoThreadMessage")));
  }
}

void Operation::finish() {
  prefs::remove(prefs::busy);
  stopTimer();
}

void Operation::stopTimer() {
  if (!mUpdateProgressTimer) return;
  platform().mainLoop->stopTimer(mUpdateProgressTimer);
  mUpdateProgressTimer = 0;
}
