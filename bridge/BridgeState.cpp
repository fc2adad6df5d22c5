#include "bridge/BridgeState.h"

#include "bridge/LibraryObject.h"

BridgeState &bridgeState() {
  static BridgeState &state = *new BridgeState;
  return state;
}

void resetBridge() {
  BridgeState &state = bridgeState();
  state.abandoned.joinAll();
  state.lastScriptErrorNumber = 0;
  state.cancelRequest = false;
  state.responseState = BridgeState::kUnknown;
  state.runningState = BridgeState::kUnknown;
  state.majorVersion = BridgeState::kUnknown;
  iTunesLibInterface::reset();
  const std::lock_guard guard(state.resources);
  state.libraryPath.clear();
  state.scriptTable = Dictionary();
}
