#include "app/PrefsController.h"

#include "app/state/AppState.h"
#include "support/Preferences.h"
#include "tests/fixtures/ScriptedView.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

class Prefs : public TestPlatform {
 protected:
  Prefs() : state(view), controller(state) {}

  ScriptedView view;
  AppState state;
  PrefsController controller;
};

}  // namespace

TEST_F(Prefs, AFirstRunStoresTheFirstValues) {
  controller.awakeFromNib();
  EXPECT_EQ(prefs::integer(prefs::allowedDurationVariation), 10);
  EXPECT_EQ(prefs::integer(prefs::preferAudioFileBitRate), 160);
  EXPECT_EQ(prefs::integer(prefs::ignoreDurationMinimum), 30);
  EXPECT_EQ(prefs::value(prefs::preferInfoTypes).toArray().size(), 8);
  EXPECT_TRUE(view.calls.isEmpty());
}

TEST_F(Prefs, ALaterRunKeepsWhatTheUserChoseAndCarriesOverTheOlderForm) {
  setPreference(prefs::preferAudioFileBitRate, 320);
  setPreference(prefs::allowedDurationVariation, 3);
  setPreference(prefs::preferAudioData, 4);
  controller.awakeFromNib();
  EXPECT_EQ(prefs::integer(prefs::preferAudioFileBitRate), 320);
  EXPECT_EQ(prefs::integer(prefs::allowedDurationVariation), 3);
  EXPECT_EQ(prefs::integer(prefs::preferAudioData15), 4);
}

TEST_F(Prefs, AResetSparesReservedKeysAndRemovesTheRest) {
  for (const char16_t *key : {u"_mine", u"NSWindow", u"busy", u"matchAlbum"}) {
    setPreference(QString::fromUtf16(key), true);
  }
  controller.resetToDefaults(false);
  EXPECT_FALSE(preference(QStringLiteral("_mine")).isNull());
  EXPECT_FALSE(preference(QStringLiteral("NSWindow")).isNull());
  EXPECT_TRUE(preference(prefs::busy).isNull());
  EXPECT_TRUE(preference(prefs::matchAlbum).isNull());
  EXPECT_TRUE(view.calls.isEmpty());
  controller.resetToDefaults(true);
  EXPECT_TRUE(view.noted("sheet ResetToDefaultsTitle"));
  time.run(1.0);
  EXPECT_TRUE(view.noted("prefs library"));
}

TEST_F(Prefs, NothingRunsForAControllerThatIsGone) {
  auto other = std::make_unique<PrefsController>(state);
  other->awakeFromNib();
  for (const QString &key : {prefs::noMatchTitle, prefs::noMatchArtist}) prefs::set(key, true);
  state.workers.detach(QStringLiteral("worker"), [] { prefs::set(prefs::noMatchDuration, true); });
  while (state.workers.running() > 0) std::this_thread::yield();
  other->resetToDefaults(true);
  other.reset();
  EXPECT_EQ(time.timerCount(), 0);
  time.run(1.0);
  EXPECT_FALSE(view.noted("prefs library"));
}

TEST_F(Prefs, ASlidersFractionNeverStays) {
  controller.awakeFromNib();
  prefs::set(prefs::allowedDurationVariation, 10.4);
  prefs::set(prefs::ignoreDurationMinimum, QStringLiteral("45 minutes"));
  EXPECT_EQ(preference(prefs::allowedDurationVariation).type(), Value::Type::Integer);
  EXPECT_EQ(prefs::integer(prefs::allowedDurationVariation), 10);
  EXPECT_EQ(prefs::integer(prefs::ignoreDurationMinimum), 45);
}

TEST_F(Prefs, OneTestForDuplicatesAlwaysStays) {
  controller.awakeFromNib();
  prefs::set(prefs::noMatchArtist, true);
  prefs::set(prefs::noMatchDuration, true);
  prefs::set(prefs::matchFileSize, true);
  prefs::set(prefs::noMatchTitle, true);
  time.run(0.1);
  EXPECT_TRUE(prefs::isTrue(prefs::noMatchTitle));
  prefs::set(prefs::matchFileSize, false);
  time.run(0.1);
  EXPECT_FALSE(prefs::isTrue(prefs::noMatchTitle));
}

TEST_F(Prefs, ANoteShowsWhileAGroupDiffersFromTheLastScan) {
  controller.awakeFromNib();
  prefs::set(prefs::matchAlbum, true);
  EXPECT_TRUE(view.settingsNotes.isEmpty());
  controller.noteAppliedDupeValues();
  controller.noteAppliedAutomarkValues();
  controller.noteAppliedInconsistentValues();
  prefs::set(prefs::matchAlbum, false);
  prefs::set(prefs::inconsistentMatchMethod, 1);
  EXPECT_TRUE(view.settingsNotes.value(0));
  EXPECT_FALSE(view.settingsNotes.value(1));
  EXPECT_TRUE(view.settingsNotes.value(2));
  prefs::set(prefs::matchAlbum, 1);
  prefs::remove(prefs::inconsistentMatchMethod);
  EXPECT_FALSE(view.settingsNotes.value(0));
  EXPECT_FALSE(view.settingsNotes.value(2));
}
