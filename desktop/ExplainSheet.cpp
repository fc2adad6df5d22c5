#include "desktop/ExplainSheet.h"

#include <QCheckBox>
#include <QVBoxLayout>

#include "bridge/LocalizedMessage.h"
#include "desktop/Icons.h"
#include "support/Preferences.h"

ExplainSheet::ExplainSheet(QWidget *attachedTo, std::function<void()> preferencesPressed)
    : SheetDialog(attachedTo) {
  setObjectName(QStringLiteral("ExplainDuplicatesTitle"));
  setPicture(icons::icon(icons::Shape::Duplicates));
  setTitle(localizedMessage(QStringLiteral("ExplainDuplicatesTitle")));
  setText(localizedMessage(QStringLiteral("ExplainDuplicatesMessage")));
  auto *doNotShow = new QCheckBox(localizedMessage(QStringLiteral("ExplainDuplicatesDoNotShow")));
  doNotShow->setObjectName(prefs::explainedDuplicates);
  contents()->addSpacing(4);
  contents()->addWidget(doNotShow);
  addButton(localizedMessage(QStringLiteral("ExplainDuplicatesOK")), 0);
  addButton(localizedMessage(QStringLiteral("ExplainDuplicatesPreferences")), 1);
  connect(this, &QDialog::finished, this, [doNotShow] {
    if (doNotShow->isChecked()) prefs::set(prefs::explainedDuplicates, true);
  });
  onChosen = [reveal = std::move(preferencesPressed)](int index) {
    if (index == 1) reveal();
  };
}
