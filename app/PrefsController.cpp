#include "app/PrefsController.h"

#include <QFile>

#include "app/library/LibraryLocation.h"
#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Preferences.h"

namespace {

constexpr int kDefaultDurationVariation = 10;
constexpr int kDefaultBitRate = 160;
constexpr int kDefaultLongTrackMinutes = 30;
const QString kUpdateEndpoint = QStringLiteral("https://updates.tallyfen.example/");

Array firstPriorities() {
  const Array list = Array::make();
  for (const QString &type : QStringLiteral("0 1 2 3 4 5 6 7").split(u' ')) list.append(type);
  return list;
}

/// The value as groups compare it: an absent one is the number 0.
Value comparable(const QString &key) {
  const Value stored = prefs::value(key);
  return stored.isNull() ? Value(0) : stored;
}

Dictionary loadResources() {
  QFile file(platform().bundle.resourceFolder + QStringLiteral("/resources.plist"));
  QString error = QStringLiteral("cannot be opened");
  Value root;
  if (file.open(QIODevice::ReadOnly)) root = platform().propertyLists->parse(file.readAll(), &error);
  if (root.toDictionary().isNull()) BMLog("!! resources not loaded: %@: %@", file.fileName(), error);
  return root.toDictionary().isNull() ? Dictionary::make(false) : root.toDictionary();
}

}  // namespace

PrefsController::~PrefsController() {
  if (observing) platform().preferences->setObserver({});
  platform().mainLoop->stopTimer(revealTimer);
}

const QStringList &PrefsController::keysOfGroup(SettingsGroup group) {
  static const QStringList groups[kSettingsGroupCount] = {
      {prefs::noMatchArtist, prefs::noMatchTitle, prefs::noMatchDuration, prefs::matchAlbum,
       prefs::matchFileKind, prefs::matchFileSize, prefs::allowedDurationVariation, prefs::noIgnoreLongTracks,
       prefs::ignoreDurationMinimum},
      {prefs::preferInfoTypes, prefs::preferAudioData15, prefs::preferAudioFileBitRate,
       prefs::preferAudioFileType, prefs::preferAudioFileTypeNumber},
      {prefs::ignorePlurals, prefs::inconsistentMatchMethod}};
  return groups[int(group)];
}

void PrefsController::awakeFromNib() {
  if (awake) return;
  awake = true;
  const Value olderForm = prefs::value(prefs::preferAudioData);
  if (prefs::value(prefs::preferAudioData15).isNull() && !olderForm.isNull()) {
    prefs::set(prefs::preferAudioData15, olderForm);
  }
  platform().preferences->setObserver([this](const QString &domain, const QString &key) {
    if (domain != platform().bundle.identifier) return;
    MainLoop &loop = *platform().mainLoop;
    if (loop.isMainThread()) return observeValue(key);
    loop.post(tasks.guarded([this, key] { observeValue(key); }));
  });
  observing = true;
  if (prefs::value(prefs::preferAudioFileBitRate).isNull()) resetToDefaults(false);
  if (prefs::value(prefs::ignoreDurationMinimum).isNull()) {
    prefs::set(prefs::ignoreDurationMinimum, kDefaultLongTrackMinutes);
  }
  updatePriorities();
}

void PrefsController::updatePriorities() {
  const bool stands = !prefs::value(prefs::preferInfoTypes).toArray().isNull();
  if (!stands) prefs::set(prefs::preferInfoTypes, firstPriorities());
  QStringList priorities;
  const Value stored = prefs::value(prefs::preferInfoTypes);
  for (const Value &type : stored.toArray()) {
    priorities.append(type.isNumber() ? QString::number(type.toInteger()) : type.toText());
  }
  if (setPriorityArray) setPriorityArray(priorities);
}

void PrefsController::infoPriorityChanged(const QStringList &priorities) {
  const Array list = Array::make();
  for (const QString &type : priorities) list.append(type);
  prefs::set(prefs::preferInfoTypes, list);
}

void PrefsController::revealTabWithIdentifier(const QString &identifier) {
  state.view.revealPreferences(identifier);
}

void PrefsController::resetToDefaults(bool byUser) {
  for (const QString &key : platform().preferences->keys(platform().bundle.identifier)) {
    if (!key.startsWith(u'_') && !key.startsWith(QStringLiteral("NS"))) prefs::remove(key);
  }
  prefs::set(prefs::allowedDurationVariation, kDefaultDurationVariation);
  prefs::set(prefs::preferAudioFileBitRate, kDefaultBitRate);
  prefs::set(prefs::ignoreDurationMinimum, kDefaultLongTrackMinutes);
  updatePriorities();
  if (!byUser) return;
  Alert alert;
  alert.key = QStringLiteral("ResetToDefaultsTitle");
  alert.title = localizedMessage(alert.key);
  alert.message = localizedMessage(QStringLiteral("ResetToDefaultsMessage"));
  alert.buttons = {localizedMessage(QStringLiteral("ResetToDefaultsOK"))};
  alert.onPreferencesWindow = true;
  state.view.beginSheet(alert, [this](int) { resetDidEnd(); });
}

void PrefsController::resetDidEnd() {
  if (iTunesInterface::canGetMusicLibrary()) {
    // A load or a scan may be under way, as the sheet covers this window alone.
    state.commands->reloadLibraryAndScan();
  }
  constexpr double kRevealDelaySeconds = 0.5;
  platform().mainLoop->stopTimer(revealTimer);
  revealTimer = platform().mainLoop->startTimer(
      kRevealDelaySeconds, false, [this] { revealTabWithIdentifier(QStringLiteral("library")); });
}

void PrefsController::observeValue(const QString &key) {
  if (observingNow) return;
  bool inAnyGroup = false;
  for (int group = 0; group < kSettingsGroupCount; ++group) {
    inAnyGroup = inAnyGroup || keysOfGroup(SettingsGroup(group)).contains(key);
  }
  if (!inAnyGroup && key != prefs::updateCheckLevel) return;
  observingNow = true;
  // A slider's fraction never stays in the store.
  const bool isWhole = key == prefs::allowedDurationVariation || key == prefs::ignoreDurationMinimum;
  if (isWhole && !prefs::value(key).isNull()) prefs::set(key, prefs::integer(key));
  observingNow = false;
  changedPreferences();
}

void PrefsController::changedPreferences() {
  const bool nothingToCompare = prefs::isTrue(prefs::noMatchTitle) && prefs::isTrue(prefs::noMatchArtist) &&
                                prefs::isTrue(prefs::noMatchDuration) && !prefs::isTrue(prefs::matchAlbum) &&
                                !prefs::isTrue(prefs::matchFileSize);
  if (nothingToCompare) platform().mainLoop->post([] { prefs::remove(prefs::noMatchTitle); });
  for (int group = 0; group < kSettingsGroupCount; ++group) {
    const bool visible = isChangedSinceScan(SettingsGroup(group));
    if (visible != noteVisible[size_t(group)]) state.view.setSettingsNoteVisible(group, visible);
    noteVisible[size_t(group)] = visible;
  }
}

bool PrefsController::isChangedSinceScan(SettingsGroup group) const {
  const std::optional<Dictionary> &values = applied[size_t(group)];
  if (!values) return false;
  const QStringList &groupKeys = keysOfGroup(group);
  return std::any_of(groupKeys.rbegin(), groupKeys.rend(),
                     [&](const QString &key) { return !isEqual(comparable(key), values->value(Key(key))); });
}

void PrefsController::noteApplied(SettingsGroup group) {
  const Dictionary values = Dictionary::make();
  for (const QString &key : keysOfGroup(group)) values.set(Key(key), comparable(key));
  applied[size_t(group)] = values;
  changedPreferences();
}

QString PrefsController::updateFeedURL() {
  const bool testVersions = prefs::integer(prefs::updateCheckLevel) != 0;
  return kUpdateEndpoint +
         QStringLiteral("tallyfen%1.xml").arg(testVersions ? QStringLiteral("-beta") : QString());
}

Dictionary PrefsController::resources() {
  static std::mutex guard;
  static QString folder;
  static Dictionary loaded;
  std::lock_guard held(guard);
  if (loaded.isNull() || folder != platform().bundle.resourceFolder) {
    folder = platform().bundle.resourceFolder;
    loaded = loadResources();
  }
  return loaded;
}
