#include "desktop/MergeSummarySheet.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "bridge/LocalizedMessage.h"
#include "desktop/Icons.h"
#include "desktop/ToolTips.h"
#include "support/SizeText.h"

namespace {

constexpr int kWidth = 660;
/// The list is as high as the window leaves room for, within these.
constexpr int kLeastHeight = 130, kMostHeight = 420;
/// A list of fewer groups is shown unfolded.
constexpr size_t kUnfoldedGroups = 20;

QString words(const char *name) {
  return localizedMessage(QStringLiteral("MergeSummary-") + QLatin1String(name));
}

QString playlistsOf(const MergedGroup &group) {
  return localizedMessage(QStringLiteral("MergeSummary-InPlaylists"),
                          group.playlists.join(QStringLiteral(", ")));
}

/// The line with its columns; the whole text is told by a tool tip, as paths are long.
QTreeWidgetItem *line(QTreeWidgetItem *parent, const QString &what, const QString &fate,
                      const QString &size) {
  auto *item = new QTreeWidgetItem(parent, {what, fate, size});
  item->setToolTip(0, toolTips::fromPlainText(what));
  item->setToolTip(1, toolTips::fromPlainText(fate));
  item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
  return item;
}

}  // namespace

MergeSummarySheet::MergeSummarySheet(QWidget *attachedTo, MergeSummary theSummary)
    : SheetDialog(attachedTo), summary(std::move(theSummary)) {
  setObjectName(QStringLiteral("mergeSummary"));
  setPicture(icons::icon(summary.failures.empty() ? icons::Shape::Done : icons::Shape::Warning));
  setTitleWidth(kWidth);
  setTitle(summary.headline());
  auto *lines = new QLabel(summary.lines().join(u'\n'));
  lines->setObjectName(QStringLiteral("mergeSummaryLines"));
  lines->setTextFormat(Qt::PlainText);
  lines->setTextInteractionFlags(Qt::TextSelectableByMouse);
  lines->setWordWrap(true);
  // As wide as the list and as high as that takes: the sheet's own size follows from it.
  lines->setFixedSize(kWidth, qMax(0, lines->heightForWidth(kWidth)));
  if (lines->text().isEmpty()) lines->hide();
  contents()->addWidget(lines);
  tree = new QTreeWidget;
  tree->setObjectName(QStringLiteral("mergeSummaryTree"));
  tree->setHeaderLabels({words("ColumnWhat"), words("ColumnFate"), words("ColumnSize")});
  tree->headerItem()->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
  tree->setFixedSize(kWidth, kLeastHeight);
  tree->setTextElideMode(Qt::ElideMiddle);
  tree->setUniformRowHeights(true);
  tree->setSelectionMode(QAbstractItemView::NoSelection);
  addFailures();
  for (const MergedGroup &group : summary.groups) addGroup(group);
  if (summary.groups.size() < kUnfoldedGroups) tree->expandAll();
  tree->header()->setStretchLastSection(false);
  tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  tree->header()->resizeSection(1, 210);
  tree->header()->resizeSection(2, 80);
  contents()->addWidget(tree);
  addButton(words("Done"), 0);
  QPushButton *copy = addButton(words("Copy"), 1);
  copy->disconnect();
  connect(copy, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(plainText()); });
}

void MergeSummarySheet::fit(int spare) {
  tree->setFixedHeight(qBound(kLeastHeight, tree->height() + spare, kMostHeight));
}

void MergeSummarySheet::addFailures() const {
  if (summary.failures.empty()) return;
  auto *problems = new QTreeWidgetItem(tree, {words("Problems")});
  for (const MergeFailure &failure : summary.failures) {
    const QString what = failure.path.isEmpty() ? failure.title : QDir::toNativeSeparators(failure.path);
    line(problems, what, {}, {})->setFirstColumnSpanned(true);
    // Reasons are sentences, and take a whole line.
    line(problems, failure.reason, {}, {})->setFirstColumnSpanned(true);
  }
  problems->setExpanded(true);
}

void MergeSummarySheet::addGroup(const MergedGroup &group) const {
  qint64 sum = 0;
  for (const MergedGroup::Unkept &file : group.unkept) sum += file.bytes;
  const QString copies = group.unkept.size() == 1
                             ? words("CopiesOne")
                             : localizedMessage(QStringLiteral("MergeSummary-Copies"), group.unkept.size());
  QTreeWidgetItem *top = line(nullptr, group.title, group.complete ? copies : words("NotFinished"),
                              sum > 0 ? sizeText(sum) : QString());
  tree->addTopLevelItem(top);
  line(top, group.keptPath, words("Kept"), {});
  for (const MergedGroup::Unkept &file : group.unkept) {
    const QString bytes = file.bytes > 0 ? sizeText(file.bytes) : QString();
    QTreeWidgetItem *item =
        line(top, file.path.isEmpty() ? file.pid : file.path, MergeSummary::words(file), bytes);
    if (!file.newPath.isEmpty()) item->setToolTip(1, toolTips::fromPlainText(file.newPath));
  }
  if (group.playlists.isEmpty()) return;
  line(top, playlistsOf(group), {}, {})->setFirstColumnSpanned(true);
}

QString MergeSummarySheet::plainText() const {
  QStringList told{summary.headline()};
  told += summary.lines();
  for (const MergeFailure &failure : summary.failures)
    told << failure.title + u'\t' + failure.path + u'\t' + failure.reason;
  for (const MergedGroup &group : summary.groups) {
    told << group.title << u'\t' + group.keptPath + u'\t' + words("Kept");
    for (const MergedGroup::Unkept &file : group.unkept)
      told << u'\t' + file.path + u'\t' + MergeSummary::words(file) + u'\t' + file.newPath;
    if (!group.playlists.isEmpty()) told << u'\t' + playlistsOf(group);
  }
  return told.join(u'\n');
}
