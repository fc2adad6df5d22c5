#pragma once

#include "desktop/SheetDialog.h"
#include "ui/MergeSummary.h"

class QTreeWidget;

/// What a merge did, group by group and file by file, and what did not work.
class MergeSummarySheet : public SheetDialog {
 public:
  MergeSummarySheet(QWidget *attachedTo, MergeSummary theSummary);

 protected:
  void fit(int spare) override;

 private:
  void addFailures() const;
  void addGroup(const MergedGroup &group) const;
  /// The whole as lines of text.
  QString plainText() const;

  const MergeSummary summary;
  QTreeWidget *tree = nullptr;
};
