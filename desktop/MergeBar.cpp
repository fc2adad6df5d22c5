#include "desktop/MergeBar.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPushButton>

#include "bridge/LocalizedMessage.h"
#include "desktop/CommandBar.h"
#include "desktop/ElidedLabel.h"
#include "desktop/ToolTips.h"
#include "repairs/MergeSettings.h"
#include "support/Preferences.h"

namespace {

constexpr int kPolicies = 3;

QString text(const char *key) {
  return localizedMessage(QLatin1String(key));
}

/// The path as people write it.
QString shortPath(const QString &path) {
  const QString home = QDir::homePath();
  return path == home || path.startsWith(home + u'/') ? u'~' + path.mid(home.size()) : path;
}

}  // namespace

MergeBar::MergeBar(const WindowActions &windowActions, QAction *merge)
    : actions(windowActions),
      policy(new QComboBox),
      folder(new ElidedLabel),
      choose(new QPushButton(text("Unkept-Choose"))) {
  auto *row = new QHBoxLayout(this);
  row->setContentsMargins(12, 0, 12, 8);
  row->setSpacing(8);
  addPolicy();
  addFolder();
  row->addWidget(CommandBar::buttonFor(merge));
  binder.onRefresh = [this] { updateFolder(); };
  refresh();
}

void MergeBar::addPolicy() {
  auto *label = new QLabel(text("Unkept-Label"));
  label->setBuddy(policy);
  policy->setObjectName(prefs::unkeptActionPolicy);
  policy->setToolTip(toolTips::fromPlainText(text("Unkept-ToolTip")));
  for (int i = 0; i < kPolicies; ++i)
    policy->addItem(localizedMessage(QStringLiteral("Unkept-") + QString::number(i)));
  binder.bindComboBox(policy, prefs::unkeptActionPolicy);
  connect(policy, &QComboBox::activated, this, [this] { actions.changedUnkeptPolicy(); });
  layout()->addWidget(label);
  layout()->addWidget(policy);
}

void MergeBar::addFolder() {
  folder->setObjectName(prefs::unkeptPath);
  choose->setObjectName(QStringLiteral("chooseUnkeptFolder"));
  choose->setToolTip(text("Unkept-ChooseToolTip"));
  connect(choose, &QPushButton::clicked, this, [this] { actions.chooseUnkeptFolder(); });
  static_cast<QHBoxLayout *>(layout())->addWidget(folder, 1);
  layout()->addWidget(choose);
}

void MergeBar::updateFolder() {
  const int chosen = prefs::integer(prefs::unkeptActionPolicy);
  const bool isFolder = chosen == int(UnkeptPolicy::Folder);
  choose->setVisible(isFolder);
  const QString path = prefs::text(prefs::unkeptPath);
  if (!isFolder) {
    const QString playlist = text("UnkeptPlaylist");
    folder->setFullText(chosen == int(UnkeptPolicy::Playlist)
                            ? localizedMessage(QStringLiteral("Unkept-PlaylistNote"), playlist)
                            : QString());
  } else if (path.isEmpty()) {
    folder->setFullText(text("Unkept-NoFolder"));
  } else if (QFileInfo(path).isDir()) {
    folder->setFullText(shortPath(path));
  } else {
    folder->setFullText(localizedMessage(QStringLiteral("Unkept-FolderGone"), shortPath(path)));
  }
}
