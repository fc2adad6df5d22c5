#include "desktop/PreferenceBinder.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include "platform/Platform.h"
#include "support/Preferences.h"

void PreferenceBinder::bindCheckBox(QAbstractButton *box, const QString &key, bool inverted) {
  QObject::connect(box, &QAbstractButton::toggled, box,
                   [this, key, inverted](bool on) { store(key, Value(on != inverted)); });
  refreshers.push_back([box, key, inverted] {
    const QSignalBlocker blocker(box);
    box->setChecked(prefs::isTrue(key) != inverted);
  });
}

void PreferenceBinder::bindNumber(QObject *control, const QString &key, std::function<void(int)> show) {
  refreshers.push_back([control, key, show = std::move(show)] {
    const QSignalBlocker blocker(control);
    show(prefs::integer(key));
  });
}

void PreferenceBinder::bindSpinBox(QSpinBox *box, const QString &key) {
  QObject::connect(box, &QSpinBox::valueChanged, box, [this, key](int value) { store(key, value); });
  bindNumber(box, key, [box](int value) { box->setValue(value); });
}

void PreferenceBinder::bindSlider(QSlider *slider, const QString &key) {
  QObject::connect(slider, &QSlider::valueChanged, slider, [this, key](int value) { store(key, value); });
  bindNumber(slider, key, [slider](int value) { slider->setValue(value); });
}

void PreferenceBinder::bindComboBox(QComboBox *box, const QString &key) {
  QObject::connect(box, &QComboBox::activated, box, [this, key](int index) { store(key, index); });
  bindNumber(box, key, [box](int value) { box->setCurrentIndex(qBound(0, value, box->count() - 1)); });
}

void PreferenceBinder::store(const QString &key, const Value &value) {
  prefs::set(key, value);
  platform().mainLoop->post([this, watch = std::weak_ptr<bool>(alive)] {
    if (!watch.expired()) refresh();
  });
}

void PreferenceBinder::refresh() {
  for (const auto &refresher : refreshers) refresher();
  if (onRefresh) onRefresh();
}
