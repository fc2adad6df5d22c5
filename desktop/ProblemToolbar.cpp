#include "desktop/ProblemToolbar.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>

#include "app/state/AppState.h"
#include "bridge/LocalizedMessage.h"
#include "desktop/Colours.h"
#include "desktop/ToolbarButton.h"
#include "desktop/WindowActions.h"

ProblemToolbar::ProblemToolbar(const WindowActions &actions) {
  auto *row = new QHBoxLayout(this);
  row->setContentsMargins(8, 6, 8, 7);
  row->setSpacing(4);
  auto *group = new QButtonGroup(this);
  const icons::Shape shapes[] = {icons::Shape::Duplicates, icons::Shape::Names, icons::Shape::Orphans,
                                 icons::Shape::Missing};
  for (const ProblemTab tab : kProblemTabs) {
    const QString identifier = identifierOfTab(tab);
    auto *button = new ToolbarButton(shapes[int(tab)], QStringLiteral("tab-") + identifier);
    button->setCheckable(true);
    button->setLabel(localizedMessage(QStringLiteral("TabTitle-") + identifier));
    button->setToolTip(localizedMessage(QStringLiteral("TabToolTip-") + identifier));
    group->addButton(button);
    row->addWidget(button);
    connect(button, &QAbstractButton::clicked, this, [this, tab] {
      if (onTabClicked) onTabClicked(tab);
    });
    tabs[int(tab)] = button;
  }
  tabs[0]->setChecked(true);
  row->addStretch();
  rescan = new ToolbarButton(icons::Shape::Scan, QStringLiteral("rescanLibrary"));
  connect(rescan, &QAbstractButton::clicked, this, [run = actions.rescan] { run(); });
  auto *preferences = new ToolbarButton(icons::Shape::Preferences, QStringLiteral("revealPreferences"));
  preferences->setLabel(localizedMessage(QStringLiteral("ToolbarLabel-preferences")));
  preferences->setToolTip(localizedMessage(QStringLiteral("ToolbarToolTip-preferences")));
  connect(preferences, &QAbstractButton::clicked, this, [run = actions.revealPreferences] { run(); });
  row->addWidget(rescan);
  row->addWidget(preferences);
}

void ProblemToolbar::setTabLabel(ProblemTab tab, const QString &label) {
  tabs[int(tab)]->setLabel(label);
}

void ProblemToolbar::setCurrentTab(ProblemTab tab) {
  tabs[int(tab)]->setChecked(true);
}

void ProblemToolbar::setRescanLabel(const QString &label, const QString &toolTip) {
  rescan->setLabel(label);
  rescan->setToolTip(toolTip);
}

void ProblemToolbar::paintEvent(QPaintEvent *) {
  QPainter painter(this);
  painter.fillRect(QRect(0, height() - 1, width(), 1), colours::separator(palette()));
}
