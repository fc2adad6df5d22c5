#include "desktop/PreferencesPage.h"

#include <QCheckBox>
#include <QVBoxLayout>

#include "bridge/LocalizedMessage.h"
#include "desktop/NoteStrip.h"

PreferencesPage::PreferencesPage() : layoutColumn(new QVBoxLayout(this)) {
  layoutColumn->setContentsMargins(20, 18, 20, 18);
  layoutColumn->setSpacing(10);
}

QCheckBox *PreferencesPage::checkBox(const QString &name, const QString &key, bool inverted) {
  auto *box = new QCheckBox(localizedMessage(QStringLiteral("Prefs-") + name));
  box->setObjectName(key);
  box->setToolTip(localizedMessage(QStringLiteral("Prefs-%1ToolTip").arg(name)));
  binder.bindCheckBox(box, key, inverted);
  return box;
}

void PreferencesPage::addNote(const QString &textKey, const QString &buttonKey,
                              const std::function<void()> &pressed) {
  layoutColumn->addStretch();
  note = new NoteStrip(localizedMessage(textKey));
  note->setObjectName(textKey);
  note->addButton(localizedMessage(buttonKey), pressed);
  QSizePolicy policy = note->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  note->setSizePolicy(policy);
  note->hide();
  layoutColumn->addWidget(note);
}

void PreferencesPage::setNoteVisible(bool visible) {
  if (note) note->setVisible(visible);
}
