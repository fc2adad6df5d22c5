#include "desktop/MergePreferences.h"

#include <QCheckBox>
#include <QVBoxLayout>

#include "bridge/LocalizedMessage.h"
#include "desktop/SecondaryLabel.h"
#include "repairs/PlaylistRepair.h"
#include "support/Preferences.h"

MergePreferences::MergePreferences() {
  const auto add = [this](const char *name, const QString &key, bool inverted) {
    QCheckBox *box = checkBox(QLatin1String(name), key, inverted);
    column()->addWidget(box);
    return box;
  };
  const auto tellNumber = [](QCheckBox *box, qint32 number) {
    box->setToolTip(formatText(box->toolTip(), {number}));
  };
  add("MergePlayedInfo", prefs::noMergePlayedInfo, true);
  add("IntelligentPlaylists", prefs::noIntelligentPlaylistHandling, true);
  column()->addSpacing(8);
  add("WarnUnkeptTrash", prefs::noWarnAboutUnkeptTrash, true);
  tellNumber(add("WarnBigPlaylists", prefs::noWarnBigPlaylists, true), PlaylistRepair::kWarnTracks);
  column()->addSpacing(8);
  tellNumber(add("ReportMinorErrors", prefs::reportMinorErrors, false), PlaylistRepair::kHugeTracks);
  add("StopForTrashFailure", prefs::noStopForTrashFailure, true);
  auto *danger = new SecondaryLabel(localizedMessage(QStringLiteral("Prefs-StopForTrashFailureOff")));
  danger->setContentsMargins(24, 0, 0, 0);
  QSizePolicy policy = danger->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  danger->setSizePolicy(policy);
  column()->addWidget(danger);
  column()->addStretch();
  binder.onRefresh = [danger] { danger->setVisible(prefs::isTrue(prefs::noStopForTrashFailure)); };
  refresh();
}
