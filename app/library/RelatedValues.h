#pragma once

#include "values/Value.h"

/// What the pane of related tracks shows and no library holds. It keeps its values apart from those of the
/// problem tables, and tells the type more simply. Main thread.
namespace RelatedValues {

/// The value under "humanTime", "trackOfTotal" or "type" of a track; null if there is none. A mutable track
/// keeps it, a missing one as the empty text.
Value calculatedValueForDictionaryKey(const Dictionary &track, Key key);

}  // namespace RelatedValues
