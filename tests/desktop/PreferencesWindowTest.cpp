#include <QCheckBox>
#include <QComboBox>
#include <QListView>
#include <QMimeData>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>

#include "desktop/FrameText.h"
#include "support/Preferences.h"
#include "tests/desktop/DesktopFixture.h"

namespace {

class PreferencesWindows : public DesktopFixture {
 protected:
  QCheckBox *box(const QString &key) { return find<QCheckBox>(view.preferencesWindow(), key); }
  QWidget *note(QStringView key = u"Prefs-DupeSettingsChanged") {
    return find<QWidget>(view.preferencesWindow(), key.toString());
  }
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

TEST_F(PreferencesWindows, MarksAreOrderedByButtonsKeysAndDrops) {
  launchAndReveal();
  view.revealPreferences(u"marks"_qs);
  auto *list = find<QListView>(view.preferencesWindow(), prefs::preferInfoTypes);
  const auto stored = [] {
    QString order;
    const Value types = prefs::value(prefs::preferInfoTypes);
    for (const Value &type : types.toArray()) order += type.toText();
    return order.toStdString();
  };
  EXPECT_EQ(stored(), "01234567");
  EXPECT_EQ(list->model()->rowCount(), 8);
  auto *up = find<QToolButton>(view.preferencesWindow(), u"Prefs-PriorityUp"_qs);
  EXPECT_FALSE(up->isEnabled()) << "nothing is selected";
  list->setCurrentIndex(list->model()->index(2, 0));
  up->click();
  EXPECT_EQ(stored(), "02134567");
  EXPECT_EQ(list->currentIndex().row(), 1) << "the line stays selected";
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Down, Qt::ControlModifier);
  QTest::keyClick(list, Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(stored(), "01324567");
  QAbstractItemModel *model = list->model();
  const std::unique_ptr<QMimeData> dragged(model->mimeData({model->index(7, 0), model->index(0, 0)}));
  EXPECT_TRUE(model->dropMimeData(dragged.get(), Qt::MoveAction, 3, 0, {}));
  EXPECT_EQ(stored(), "13072456");
  EXPECT_TRUE(note(u"Prefs-AutomarkChanged")->isVisible());
  QTest::mouseClick(note(u"Prefs-AutomarkChanged")->findChild<QPushButton *>(), Qt::LeftButton);
  EXPECT_FALSE(note(u"Prefs-AutomarkChanged")->isVisible()) << "applied by marking again";
  application.controller().prefsController().resetToDefaults(false);
  EXPECT_EQ(stored(), "01234567");
  EXPECT_TRUE(model->index(0, 0).data().toString().contains(u"complete"_qs))
      << "the list shows the first order";
}

TEST_F(PreferencesWindows, TheBitRateIsForTheOneCriterionThatHasIt) {
  launchAndReveal();
  view.revealPreferences(u"marks"_qs);
  auto *audio = find<QComboBox>(view.preferencesWindow(), prefs::preferAudioData15);
  auto *bitRate = find<QSpinBox>(view.preferencesWindow(), prefs::preferAudioFileBitRate);
  auto *type = find<QComboBox>(view.preferencesWindow(), prefs::preferAudioFileTypeNumber);
  EXPECT_EQ(audio->count(), 7);
  EXPECT_EQ(type->count(), 7);
  for (int criterion = 0; criterion < audio->count(); ++criterion) {
    audio->setCurrentIndex(criterion);
    Q_EMIT audio->activated(criterion);
    settle();
    EXPECT_EQ(prefs::integer(prefs::preferAudioData15), criterion);
    EXPECT_EQ(bitRate->isEnabled(), criterion == 4);
  }
  EXPECT_FALSE(type->isEnabled());
  box(prefs::preferAudioFileType)->click();
  settle();
  EXPECT_TRUE(type->isEnabled());
  EXPECT_EQ(bitRate->value(), 160);
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
