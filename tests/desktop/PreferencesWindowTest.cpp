#include <QCheckBox>
#include <QPushButton>
#include <QSpinBox>

#include "desktop/FrameText.h"
#include "support/Preferences.h"
#include "tests/desktop/DesktopFixture.h"

namespace {

class PreferencesWindows : public DesktopFixture {
 protected:
  QCheckBox *box(const QString &key) { return find<QCheckBox>(view.preferencesWindow(), key); }
  QWidget *note() { return find<QWidget>(view.preferencesWindow(), u"Prefs-DupeSettingsChanged"_qs); }
  void launchAndReveal() {
    prefs::set(prefs::explainedDuplicates, true);
    writeLibrary(1);
    launch();
    view.revealPreferences(u"dupe"_qs);
    settle();
  }
};

}  // namespace

TEST_F(PreferencesWindows, TellThatAChangedSettingAwaitsAScan) {
  launchAndReveal();
  EXPECT_FALSE(note()->isVisible());
  box(prefs::matchFileSize)->click();
  EXPECT_TRUE(prefs::isTrue(prefs::matchFileSize));
  EXPECT_TRUE(note()->isVisible());
  box(prefs::matchFileSize)->click();
  EXPECT_FALSE(note()->isVisible()) << "it is as the scan saw it";
  box(prefs::matchFileSize)->click();
  QTest::mouseClick(note()->findChild<QPushButton *>(), Qt::LeftButton);
  EXPECT_TRUE(runUntil([this] { return !note()->isVisible(); })) << "a scan applies it";
  EXPECT_TRUE(runUntil([this] { return !prefs::isTrue(prefs::busy) && !state().mMusicLibraryBusy; }));
}

TEST_F(PreferencesWindows, ABoxFollowsWhatTheApplicationPutsBack) {
  launchAndReveal();
  for (const QString &key : {prefs::noMatchTitle, prefs::noMatchArtist, prefs::noMatchDuration}) {
    EXPECT_TRUE(box(key)->isChecked());
    box(key)->click();
    EXPECT_TRUE(prefs::isTrue(key)) << "the box says the opposite of the key";
  }
  settle();
  EXPECT_TRUE(box(prefs::noMatchTitle)->isChecked());
  EXPECT_FALSE(box(prefs::noMatchArtist)->isChecked());
}

TEST_F(PreferencesWindows, NumbersAreStoredWholeAndFollowTheirBox) {
  launchAndReveal();
  auto *seconds = find<QSpinBox>(view.preferencesWindow(), prefs::allowedDurationVariation);
  EXPECT_EQ(seconds->value(), 10);
  seconds->setValue(25);
  EXPECT_EQ(prefs::value(prefs::allowedDurationVariation).type(), Value::Type::Integer);
  EXPECT_EQ(prefs::integer(prefs::allowedDurationVariation), 25);
  box(prefs::noMatchDuration)->click();
  settle();
  EXPECT_FALSE(seconds->isEnabled());
}

TEST_F(PreferencesWindows, ResetShowsTheFirstValuesAgain) {
  launchAndReveal();
  box(prefs::matchFileKind)->click();
  find<QPushButton>(view.preferencesWindow(), u"resetToDefaults"_qs)->click();
  ASSERT_TRUE(sheet());
  EXPECT_EQ(sheet()->parentWidget(), view.preferencesWindow());
  EXPECT_FALSE(box(prefs::matchFileKind)->isChecked());
  sheet()->choose(0);
  settle();
}

TEST_F(PreferencesWindows, AppearWhereTheyWereUnlessThatIsOffTheScreen) {
  prefs::set(prefs::prefsWindowOrigin, u"{120, 90}"_qs);
  view.revealPreferences(u"library"_qs);
  EXPECT_EQ(view.preferencesWindow()->originText(), u"{120, 90}"_qs);
}

TEST(FrameTexts, ReadOnlyWhatTheyWrite) {
  const QRect frame(-20, 30, 900, 560);
  EXPECT_EQ(frameText::toRectangle(frameText::fromRectangle(frame)), frame);
  EXPECT_EQ(frameText::toPoint(u" {3.0, -4} "_qs), QPoint(3, -4));
  for (const QString &text : {u""_qs, u"{1, 2}"_qs, u"{{1, 2}, {0, 5}}"_qs, u"{{1, 2}, {3, 4}} x"_qs,
                              u"{{1, 2}, {99999999999, 4}}"_qs, u"{{a, 2}, {3, 4}}"_qs}) {
    EXPECT_FALSE(frameText::toRectangle(text)) << text.toStdString();
  }
}

TEST(FrameTexts, BringFramesBackToTheScreen) {
  const QRect screen(0, 20, 1000, 700);
  EXPECT_EQ(frameText::broughtBack({10, 30, 200, 100}, screen), QRect(10, 30, 200, 100));
  EXPECT_EQ(frameText::broughtBack({5000, -400, 200, 100}, screen), QRect(800, 20, 200, 100));
  EXPECT_EQ(frameText::broughtBack({-50, 30, 3000, 100}, screen), QRect(0, 30, 1000, 100));
}
