#include "desktop/NamePreferences.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QVBoxLayout>

#include "bridge/LocalizedMessage.h"
#include "support/Preferences.h"

NamePreferences::NamePreferences(const WindowActions &actions) {
  auto *row = new QHBoxLayout;
  row->setSpacing(10);
  auto *method = new QComboBox;
  method->setObjectName(prefs::inconsistentMatchMethod);
  method->setToolTip(localizedMessage(QStringLiteral("Prefs-MatchMethodToolTip")));
  method->addItem(localizedMessage(QStringLiteral("Prefs-MatchMethod-spelling")));
  method->addItem(localizedMessage(QStringLiteral("Prefs-MatchMethod-phonetic")));
  auto *label = new QLabel(localizedMessage(QStringLiteral("Prefs-MatchMethod")));
  label->setBuddy(method);
  row->addWidget(label);
  row->addWidget(method);
  row->addStretch();
  column()->addLayout(row);
  column()->addWidget(checkBox(QStringLiteral("IgnorePlurals"), prefs::ignorePlurals, false));
  column()->addWidget(checkBox(QStringLiteral("WarnPhonetic"), prefs::noWarnAboutPhoneticOrPlurals, true));
  binder.bindComboBox(method, prefs::inconsistentMatchMethod);
  addNote(QStringLiteral("Prefs-InconsistentChanged"), QStringLiteral("Prefs-ScanAgain"), actions.rescan);
  refresh();
}
