#include "desktop/LibraryPreferences.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "bridge/LocalizedMessage.h"
#include "desktop/ElidedLabel.h"
#include "support/Preferences.h"

namespace {

QString text(const char *key) {
  return localizedMessage(QLatin1String(key));
}

QLabel *rightLabel(const QString &title) {
  auto *label = new QLabel(title);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return label;
}

}  // namespace

LibraryPreferences::LibraryPreferences(const WindowActions &actions)
    : libraryFolderLabel(new ElidedLabel), mediaFolderLabel(new ElidedLabel), songCountLabel(new QLabel) {
  addFolders(actions);
  column()->addSpacing(12);
  column()->addWidget(checkBox(QStringLiteral("ScanAtStartup"), prefs::noScanAtStartup, true));
  column()->addWidget(
      checkBox(QStringLiteral("UntrustedMediaFolder"), prefs::suppressUntrustedMediaFolderAlert, true));
  column()->addWidget(checkBox(QStringLiteral("WarnLibSize"), prefs::noWarnAboutLibSize, true));
  column()->addStretch();
  binder.onRefresh = [this] { automatic->setEnabled(!prefs::text(prefs::manualMediaPath).isEmpty()); };
  setPaths({}, {});
}

void LibraryPreferences::addFolders(const WindowActions &actions) {
  auto *grid = new QGridLayout;
  grid->setHorizontalSpacing(10);
  grid->setVerticalSpacing(10);
  grid->setColumnStretch(1, 1);
  auto *choose = new QPushButton(text("Prefs-ChooseMediaFolder"));
  choose->setObjectName(QStringLiteral("chooseMediaFolder"));
  choose->setToolTip(text("Prefs-ChooseMediaFolderToolTip"));
  connect(choose, &QPushButton::clicked, this, actions.chooseMediaFolder);
  automatic = new QPushButton(text("Prefs-AutomaticMediaFolder"));
  automatic->setObjectName(QStringLiteral("automaticMediaFolder"));
  automatic->setToolTip(text("Prefs-AutomaticMediaFolderToolTip"));
  connect(automatic, &QPushButton::clicked, this, [this, run = actions.useAutomaticMediaFolder] {
    run();
    refresh();
  });
  grid->addWidget(rightLabel(text("Prefs-LibraryFolder")), 0, 0);
  grid->addWidget(libraryFolderLabel, 0, 1, 1, 3);
  grid->addWidget(rightLabel(text("Prefs-MediaFolder")), 1, 0);
  grid->addWidget(mediaFolderLabel, 1, 1);
  grid->addWidget(choose, 1, 2);
  grid->addWidget(automatic, 1, 3);
  grid->addWidget(rightLabel(text("Prefs-SongCount")), 2, 0);
  grid->addWidget(songCountLabel, 2, 1, 1, 3);
  column()->addLayout(grid);
}

void LibraryPreferences::setPaths(const QString &libraryFolder, const QString &mediaFolder) {
  const QString none = text("Prefs-NoFolder");
  libraryFolderLabel->setFullText(libraryFolder.isEmpty() ? none : libraryFolder);
  mediaFolderLabel->setFullText(mediaFolder.isEmpty() ? none : mediaFolder);
  libraryFolderLabel->setEnabled(!libraryFolder.isEmpty());
  mediaFolderLabel->setEnabled(!mediaFolder.isEmpty());
  refresh();
}

void LibraryPreferences::setSongCount(const QString &count) {
  songCountLabel->setText(count);
}
