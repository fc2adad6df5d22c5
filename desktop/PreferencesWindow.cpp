#include "desktop/PreferencesWindow.h"

#include <QEvent>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "bridge/LocalizedMessage.h"
#include "desktop/DuplicatePreferences.h"
#include "desktop/FrameText.h"
#include "desktop/LibraryPreferences.h"
#include "desktop/MarkPreferences.h"
#include "desktop/MergePreferences.h"
#include "desktop/NamePreferences.h"
#include "support/Preferences.h"

PreferencesWindow::PreferencesWindow(WindowActions windowActions)
    : actions(std::move(windowActions)),
      tabs(new QTabWidget),
      libraryPage(new LibraryPreferences(actions)),
      duplicatePage(new DuplicatePreferences(actions)),
      markPage(new MarkPreferences(actions)),
      namePage(new NamePreferences(actions)),
      mergePage(new MergePreferences) {
  setWindowTitle(localizedMessage(QStringLiteral("Prefs-Title")));
  setMinimumWidth(600);
  tabs->addTab(libraryPage, localizedMessage(QStringLiteral("Prefs-Tab-library")));
  tabs->addTab(duplicatePage, localizedMessage(QStringLiteral("Prefs-Tab-dupe")));
  tabs->addTab(markPage, localizedMessage(QStringLiteral("Prefs-Tab-marks")));
  tabs->addTab(namePage, localizedMessage(QStringLiteral("Prefs-Tab-names")));
  tabs->addTab(mergePage, localizedMessage(QStringLiteral("Prefs-Tab-merge")));
  auto *reset = new QPushButton(localizedMessage(QStringLiteral("Prefs-ResetToDefaults")));
  reset->setObjectName(QStringLiteral("resetToDefaults"));
  reset->setToolTip(localizedMessage(QStringLiteral("Prefs-ResetToDefaultsToolTip")));
  connect(reset, &QPushButton::clicked, this, [this] {
    actions.resetToDefaults();
    refresh();
  });
  auto *close = new QPushButton(localizedMessage(QStringLiteral("Prefs-Close")));
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  auto *row = new QHBoxLayout;
  row->addWidget(reset);
  row->addStretch();
  row->addWidget(close);
  auto *column = new QVBoxLayout(this);
  column->setContentsMargins(12, 12, 12, 12);
  column->addWidget(tabs);
  column->addLayout(row);
  for (QPushButton *button : findChildren<QPushButton *>()) button->setAutoDefault(false);
}

void PreferencesWindow::reveal(const QString &tabIdentifier, const QWidget *near) {
  static const QStringList identifiers{QStringLiteral("library"), QStringLiteral("dupe"),
                                       QStringLiteral("marks"), QStringLiteral("names"),
                                       QStringLiteral("merge")};
  const qsizetype index = identifiers.indexOf(tabIdentifier);
  if (index >= 0) tabs->setCurrentIndex(int(index));
  refresh();
  if (!wasShown) restorePlace(near);
  wasShown = true;
  show();
  raise();
  activateWindow();
}

void PreferencesWindow::restorePlace(const QWidget *near) {
  adjustSize();
  const std::optional<QPoint> saved = frameText::toPoint(prefs::text(prefs::prefsWindowOrigin));
  QRect frame(QPoint(), size());
  frame.moveCenter(near ? near->geometry().center() : frameText::screenFor({}).center());
  if (saved) frame.moveTopLeft(*saved);
  move(frameText::broughtBack(frame, frameText::screenFor(frame)).topLeft());
}

void PreferencesWindow::refresh() {
  libraryPage->refresh();
  duplicatePage->refresh();
  markPage->refresh();
  namePage->refresh();
  mergePage->refresh();
}

void PreferencesWindow::setSettingsNoteVisible(int group, bool visible) {
  if (group == 0) duplicatePage->setNoteVisible(visible);
  if (group == 1) markPage->setNoteVisible(visible);
  if (group == 2) namePage->setNoteVisible(visible);
}

QString PreferencesWindow::originText() const {
  return wasShown ? frameText::fromPoint(pos()) : QString();
}

void PreferencesWindow::changeEvent(QEvent *event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) refresh();
}
