#include "scanners/DuplicateSettings.h"

#include <algorithm>

#include "support/BMLog.h"
#include "support/Preferences.h"
#include "values/Keys.h"

DuplicateSettings DuplicateSettings::fromPreferences() {
  DuplicateSettings settings;
  settings.matchArtist = !prefs::isTrue(prefs::noMatchArtist);
  settings.matchTitle = !prefs::isTrue(prefs::noMatchTitle);
  settings.matchDuration = !prefs::isTrue(prefs::noMatchDuration);
  settings.matchAlbum = prefs::isTrue(prefs::matchAlbum);
  settings.matchKind = prefs::isTrue(prefs::matchFileKind);
  settings.matchSize = prefs::isTrue(prefs::matchFileSize);
  settings.ignoreLong = !prefs::isTrue(prefs::noIgnoreLongTracks);
  settings.durationVariation = prefs::integer(prefs::allowedDurationVariation);
  settings.longLimit = float(prefs::integer(prefs::ignoreDurationMinimum) * 60.0);
  return settings;
}

void DuplicateSettings::log() const {
  BMLog(
      "scanLibraryForDuplicatesThread artist:%d title:%d time:%d(%d) album:%d kind:%d size:%d "
      "ignorelong:%d(%d secs)",
      matchArtist, matchTitle, matchDuration, durationVariation, matchAlbum, matchKind, matchSize, ignoreLong,
      qint64(longLimit));
}

float durationSeconds(const Dictionary &track) {
  const Value &milliseconds = track.value(keys::TotalTime);
  if (milliseconds.type() == Value::Type::Integer) return float(milliseconds.toInteger()) / 1000.0F;
  // Beyond the range of a 32-bit float the conversion would be undefined.
  constexpr double kLargest = 3.0e38;
  const double number = milliseconds.toDouble();
  return float(number > kLargest ? kLargest : std::max(number, -kLargest)) / 1000.0F;
}
