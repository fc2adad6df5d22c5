#include "repairs/AutomarkRules.h"

#include <algorithm>
#include <limits>

#include "support/Preferences.h"

namespace {

qint32 saturated(const Value &value) {
  using Limits = std::numeric_limits<qint32>;
  return qint32(std::clamp<qint64>(value.toInteger(), Limits::min(), Limits::max()));
}

AutomarkRules rulesFrom(const std::function<Value(const QString &)> &setting) {
  AutomarkRules rules;
  const Value criteria = setting(prefs::preferInfoTypes);
  for (const Value &criterion : criteria.toArray()) {
    if (criterion.isText() || criterion.isNumber()) rules.preferInfoTypes.push_back(saturated(criterion));
  }
  rules.preferAudioData15 = saturated(setting(prefs::preferAudioData15));
  rules.preferAudioFileBitRate = saturated(setting(prefs::preferAudioFileBitRate));
  if (setting(prefs::preferAudioFileType).toBool()) {
    rules.preferredKind = saturated(setting(prefs::preferAudioFileTypeNumber));
  }
  return rules;
}

}  // namespace

AutomarkRules AutomarkRules::fromPreferences() {
  return rulesFrom(prefs::value);
}

AutomarkRules AutomarkRules::fromSettings(const Dictionary &settings) {
  return rulesFrom([&](const QString &key) { return settings.value(Key(key)); });
}
