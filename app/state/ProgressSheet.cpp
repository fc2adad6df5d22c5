#include "app/state/ProgressSheet.h"

#include "app/state/AppState.h"
#include "platform/Platform.h"

namespace {
constexpr double kDismissDelaySeconds = 0.25;
}

ProgressSheet::~ProgressSheet() {
  stopDismissTimer();
}

void ProgressSheet::displayProgressSheet() {
  if (state.mWantsToTerminate) return;
  if (mSheetDismissTimer) return stopDismissTimer();
  if (state.view.hasSheet()) return;
  shown = true;
  state.view.beginProgressSheet();
}

void ProgressSheet::endProgressSheet() {
  if (mSheetDismissTimer) return;
  mSheetDismissTimer =
      platform().mainLoop->startTimer(kDismissDelaySeconds, false, [this] { endProgressSheetImmediately(); });
}

void ProgressSheet::endProgressSheetImmediately() {
  stopDismissTimer();
  shown = false;
  state.view.endProgressSheet();
}

void ProgressSheet::stopDismissTimer() {
  if (!mSheetDismissTimer) return;
  platform().mainLoop->stopTimer(mSheetDismissTimer);
  mSheetDismissTimer = 0;
}
