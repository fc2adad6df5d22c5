#include "desktop/MarkPreferences.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

#include "bridge/LocalizedMessage.h"
#include "desktop/PriorityList.h"
#include "desktop/SecondaryLabel.h"
#include "desktop/ToolTips.h"
#include "support/Preferences.h"

namespace {

/// The criterion for the audio that has a bit rate of its own.
constexpr int kReachesBitRate = 4;
constexpr int kAudioCriteria = 7;
constexpr int kFileTypes = 7;
constexpr int kMostKilobits = 9999;

QString text(const char *key) {
  return localizedMessage(QLatin1String(key));
}

QString wrappedTip(const char *key) {
  return toolTips::fromPlainText(text(key));
}

/// A box with the texts "<prefix>0" to "<prefix><count - 1>".
QComboBox *comboBox(const QString &name, const QString &prefix, int count) {
  auto *box = new QComboBox;
  box->setObjectName(name);
  for (int i = 0; i < count; ++i) box->addItem(localizedMessage(prefix + QString::number(i)));
  return box;
}

}  // namespace

MarkPreferences::MarkPreferences(const WindowActions &windowActions) : actions(windowActions) {
  addPriorities();
  column()->addSpacing(6);
  addAudio();
  addFileType();
  addNote(QStringLiteral("Prefs-AutomarkChanged"), QStringLiteral("Prefs-Automark"), actions.automark);
  binder.onRefresh = [this] {
    if (actions.updatePriorities) actions.updatePriorities();
    updateEnabledStates();
  };
}

void MarkPreferences::addPriorities() {
  priorities = new PriorityList;
  auto *title = new QLabel(text("Prefs-InfoPriorities") + u':');
  auto *explanation = new SecondaryLabel(text("Prefs-InfoPrioritiesExplained"));
  column()->addWidget(title);
  column()->addWidget(priorities);
  column()->addWidget(explanation);
  RKTrackInfoPriorityController &order = priorities->controller();
  order.onPriorityChanged = [this, &order] {
    if (actions.storePriorities) actions.storePriorities(order.priorityArray());
  };
}

void MarkPreferences::addAudio() {
  audio = comboBox(prefs::preferAudioData15, QStringLiteral("PreferAudio-"), kAudioCriteria);
  audio->setToolTip(wrappedTip("Prefs-PreferAudioToolTip"));
  auto *title = new QLabel(text("Prefs-PreferAudio"));
  title->setBuddy(audio);
  bitRate = new QSpinBox;
  bitRate->setObjectName(prefs::preferAudioFileBitRate);
  bitRate->setRange(0, kMostKilobits);
  bitRate->setSingleStep(32);
  bitRate->setSuffix(u' ' + text("Prefs-Unit-kbps"));
  bitRate->setToolTip(wrappedTip("Prefs-PreferBitRateToolTip"));
  bitRate->setAccessibleName(text("Prefs-PreferBitRateToolTip"));
  binder.bindComboBox(audio, prefs::preferAudioData15);
  binder.bindSpinBox(bitRate, prefs::preferAudioFileBitRate);
  column()->addWidget(title);
  auto *row = new QHBoxLayout;
  row->setSpacing(10);
  row->addWidget(audio);
  row->addWidget(bitRate);
  row->addStretch();
  column()->addLayout(row);
}

void MarkPreferences::addFileType() {
  prefersType = checkBox(QStringLiteral("PreferFileType"), prefs::preferAudioFileType, false);
  fileType = comboBox(prefs::preferAudioFileTypeNumber, QStringLiteral("PreferType-"), kFileTypes);
  fileType->setToolTip(prefersType->toolTip());
  fileType->setAccessibleName(prefersType->text());
  binder.bindComboBox(fileType, prefs::preferAudioFileTypeNumber);
  auto *row = new QHBoxLayout;
  row->setSpacing(10);
  row->addWidget(prefersType);
  row->addWidget(fileType);
  row->addStretch();
  column()->addLayout(row);
}

void MarkPreferences::setPriorityArray(const QStringList &identifiers) {
  if (identifiers != priorities->controller().priorityArray()) {
    priorities->controller().setPriorityArray(identifiers);
  }
}

void MarkPreferences::updateEnabledStates() {
  bitRate->setEnabled(audio->currentIndex() == kReachesBitRate);
  fileType->setEnabled(prefersType->isChecked());
}
