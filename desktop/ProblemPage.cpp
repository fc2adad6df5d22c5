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

ProblemPage::ProblemPage(AppState &appState, const WindowActions &windowActions, ProblemTab problemTab)
    : state(appState),
      actions(windowActions),
      tab(problemTab),
      rows(new ProblemTable(appState, problemTab)),
      empty(new EmptyPage) {
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
  QString line = localizedMessage(QStringLiteral("Status-Songs"), count);
  if (tab == ProblemTab::Duplicates) {
    const int groups = rows->rows().groupCount();
    line = groups == 1 ? localizedMessage(QStringLiteral("Status-OneDuplicateGroup"), count)
                       : localizedMessage(QStringLiteral("Status-DuplicateGroups"), groups, count);
  }
  const size_t selected = rows->selection().size();
  return selected == 0 ? line : line + localizedMessage(QStringLiteral("Status-Selected"), int(selected));
}
