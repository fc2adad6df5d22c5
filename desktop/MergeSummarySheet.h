#pragma once

#include "desktop/SheetDialog.h"
#include "ui/MergeSummary.h"

class QTreeWidget;
class QTreeWidgetItem;

/// What a merge did, group by group and file by file, and what did not work.
class MergeSummarySheet : public SheetDialog {
 public:
  MergeSummarySheet(QWidget *attachedTo, MergeSummary theSummary);

 private:
  void addFailures(QTreeWidget &tree) const;
  void addGroup(QTreeWidget &tree, const MergedGroup &group) const;
  /// The whole as lines of text.
  QString plainText() const;

  const MergeSummary summary;
};
