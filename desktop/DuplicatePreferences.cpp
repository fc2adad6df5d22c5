#include "desktop/DuplicatePreferences.h"

#include <QCheckBox>
#include <QLabel>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>

#include "bridge/LocalizedMessage.h"
#include "support/Preferences.h"

namespace {

constexpr int kMostSeconds = 120;
constexpr int kMostSliderSeconds = 60;
constexpr int kMostMinutes = 600;

QString text(const QString &key) {
  return localizedMessage(key);
}

QSpinBox *spinBox(int most, const QString &unitKey, const QString &toolTip) {
  auto *box = new QSpinBox;
  box->setRange(0, most);
  box->setSuffix(u' ' + text(unitKey));
  box->setToolTip(toolTip);
  return box;
}

}  // namespace

DuplicatePreferences::DuplicatePreferences(const WindowActions &actions) {
  auto *introduction = new QLabel(text(QStringLiteral("Prefs-DupeIntroduction")));
  introduction->setWordWrap(true);
  column()->addWidget(introduction);
  column()->addWidget(checkBox(QStringLiteral("MatchTitle"), prefs::noMatchTitle, true));
  column()->addWidget(checkBox(QStringLiteral("MatchArtist"), prefs::noMatchArtist, true));
  addDuration();
  column()->addWidget(checkBox(QStringLiteral("MatchAlbum"), prefs::matchAlbum, false));
  column()->addWidget(checkBox(QStringLiteral("MatchFileKind"), prefs::matchFileKind, false));
  column()->addWidget(checkBox(QStringLiteral("MatchFileSize"), prefs::matchFileSize, false));
  column()->addSpacing(10);
  addLongTracks();
  addNote(QStringLiteral("Prefs-DupeSettingsChanged"), QStringLiteral("Prefs-ScanAgain"), actions.rescan);
  binder.onRefresh = [this] { updateEnabledStates(); };
  refresh();
}

void DuplicatePreferences::addDuration() {
  const QString toolTip = text(QStringLiteral("Prefs-DurationVariationToolTip"));
  duration = checkBox(QStringLiteral("MatchDuration"), prefs::noMatchDuration, true);
  variationSlider = new QSlider(Qt::Horizontal);
  variationSlider->setRange(0, kMostSliderSeconds);
  variationSlider->setPageStep(5);
  variationSlider->setToolTip(toolTip);
  variation = spinBox(kMostSeconds, QStringLiteral("Prefs-Unit-seconds"), toolTip);
  variation->setObjectName(prefs::allowedDurationVariation);
  binder.bindSlider(variationSlider, prefs::allowedDurationVariation);
  binder.bindSpinBox(variation, prefs::allowedDurationVariation);
  auto *row = new QHBoxLayout;
  row->setSpacing(10);
  row->addWidget(duration);
  row->addWidget(variationSlider, 1);
  row->addWidget(variation);
  column()->addLayout(row);
}

void DuplicatePreferences::addLongTracks() {
  longTracks = checkBox(QStringLiteral("IgnoreLongTracks"), prefs::noIgnoreLongTracks, true);
  minimum = spinBox(kMostMinutes, QStringLiteral("Prefs-Unit-minutes"), longTracks->toolTip());
  minimum->setObjectName(prefs::ignoreDurationMinimum);
  binder.bindSpinBox(minimum, prefs::ignoreDurationMinimum);
  auto *row = new QHBoxLayout;
  row->setSpacing(10);
  row->addWidget(longTracks);
  row->addWidget(minimum);
  row->addStretch();
  column()->addLayout(row);
}

void DuplicatePreferences::updateEnabledStates() {
  variationSlider->setEnabled(duration->isChecked());
  variation->setEnabled(duration->isChecked());
  minimum->setEnabled(longTracks->isChecked());
}
