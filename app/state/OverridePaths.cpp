#include "app/state/OverridePaths.h"

#include "app/state/AppState.h"

QHash<QString, QString> &equivOverridePathsDict(AppState &state) {
  return state.library.mOverridePathsDict;
}

void writeEquivOverridePathsDict(const AppState &) {}
