#include "app/library/RelatedValues.h"

#include "app/library/CalculatedTexts.h"
#include "values/Keys.h"

namespace {

Value typeOf(const Dictionary &track) {
  const QString &kind = track.value(keys::Kind).toText();
  if (kind.isEmpty()) return {};
  return CalculatedTexts::withBitRate(
      kind.startsWith(u"MPEG") ? QStringLiteral("MP3") : CalculatedTexts::firstWordOf(kind), track);
}

}  // namespace

Value RelatedValues::calculatedValueForDictionaryKey(const Dictionary &track, Key key) {
  return CalculatedTexts::keptOrCalculated(track, key, [&]() -> Value {
    if (key == keys::humanTime) return CalculatedTexts::humanTimeOf(track);
    if (key == keys::trackOfTotal) return CalculatedTexts::trackOfTotalOf(track);
    if (key == keys::type) return typeOf(track);
    return {};
  });
}
