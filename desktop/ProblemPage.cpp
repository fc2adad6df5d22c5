#include "desktop/ProblemPage.h"

#include "bridge/LocalizedMessage.h"

namespace {

QString text(const QString &key) {
  return localizedMessage(key);
}

icons::Shape shapeOf(ProblemTab tab) {
  switch (tab) {
    case ProblemTab::Duplicates:
      return icons::Shape::Duplicates;
    case ProblemTab::Names:
      return icons::Shape::Names;
    case ProblemTab::Orphans:
      return icons::Shape::Orphans;
    case ProblemTab::Missing:
      return icons::Shape::Missing;
  }
  return icons::Shape::Note;
}

}  // namespace

ProblemPage::ProblemPage(AppState &appState, const WindowActions &windowActions, ProblemTab problemTab,
                         ProblemTable *table)
    : state(appState), actions(windowActions), tab(problemTab), rows(table), empty(new EmptyPage) {
  addWidget(rows);
  addWidget(empty);
  reload();
}

void ProblemPage::reload() {
  rows->reload();
  setCurrentWidget(rows->rows().rowCount() > 0 ? static_cast<QWidget *>(rows) : empty);
  updateEmptyPage();
}

void ProblemPage::updateEmptyPage() {
  if (currentWidget() != empty) return;
  const EmptyPage::Button scan{text(QStringLiteral("ToolbarLabel-scanLibrary")), actions.rescan};
  const QString identifier = identifierOfTab(tab);
  if (!isLookedFor()) {
    const QString title = text(QStringLiteral("TabTitle-") + identifier);
    empty->setContents(shapeOf(tab), title, text(QStringLiteral("Empty-notLookedFor-") + identifier), {});
  } else if (state.mMusicLibraryBusy) {
    empty->setContents(icons::Shape::Scan, text(QStringLiteral("LoadingLibrary")), {}, {});
  } else if (state.library.mMusicLibrarySortedTracks.isEmpty()) {
    empty->setContents(icons::Shape::Note, text(QStringLiteral("Empty-noLibrary")),
                       text(QStringLiteral("Empty-noLibraryMessage")),
                       {scan, {text(QStringLiteral("Empty-preferences")), actions.revealPreferences}});
  } else if (!state.mHaveScannedLibraryForProblems) {
    empty->setContents(icons::Shape::Scan, text(QStringLiteral("Empty-notScanned")),
                       text(QStringLiteral("Empty-notScannedMessage")), {scan});
  } else {
    empty->setContents(icons::Shape::Done, text(QStringLiteral("Empty-") + identifier),
                       text(QStringLiteral("Empty-%1Message").arg(identifier)), {});
  }
}

QString ProblemPage::summary() const {
  const int count = rows->rows().rowCount();
  if (count == 0) return {};
  const size_t selected = rows->selection().size();
  const QString line = countLine(count);
  return selected == 0 ? line : line + localizedMessage(QStringLiteral("Status-Selected"), int(selected));
}

QString ProblemPage::countLine(int count) const {
  if (tab == ProblemTab::Names) {
    return count == 1 ? text(QStringLiteral("Status-OneName"))
                      : localizedMessage(QStringLiteral("Status-Names"), count);
  }
  if (tab != ProblemTab::Duplicates) return localizedMessage(QStringLiteral("Status-Songs"), count);
  const int groups = rows->rows().groupCount();
  return groups == 1 ? localizedMessage(QStringLiteral("Status-OneDuplicateGroup"), count)
                     : localizedMessage(QStringLiteral("Status-DuplicateGroups"), groups, count);
}
