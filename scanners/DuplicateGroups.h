#pragma once

#include <QtGlobal>

struct AppState;

/// Gives the rows of each duplicate group one `UIStripe`, other than that of the group before, from a row on.
/// Main thread, while no scan runs or under the list's lock.
void setStripesForDupesFromIndex(AppState &state, qint32 index);
