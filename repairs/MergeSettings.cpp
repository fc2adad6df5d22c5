#include "repairs/MergeSettings.h"

#include "bridge/LocalizedMessage.h"
#include "platform/Platform.h"
#include "support/Preferences.h"

MergeSettings MergeSettings::fromPreferences() {
  MergeSettings settings;
  settings.policy = prefs::integer(prefs::unkeptActionPolicy);
  settings.unkeptFolder = prefs::text(prefs::unkeptPath);
  if (settings.unkeptFolder.isEmpty()) {
    settings.unkeptFolder = formatText(QStringLiteral("%@/Desktop/%@"),
                                       {platform().folders.home, localizedMessage(u"UnkeptFolderName"_qs)});
  }
  settings.noMergePlayedInfo = prefs::isTrue(prefs::noMergePlayedInfo);
  settings.noIntelligentPlaylistHandling = prefs::isTrue(prefs::noIntelligentPlaylistHandling);
  settings.noStopForTrashFailure = prefs::isTrue(prefs::noStopForTrashFailure);
  return settings;
}
