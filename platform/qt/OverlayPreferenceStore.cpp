#include "platform/qt/OverlayPreferenceStore.h"

OverlayPreferenceStore::OverlayPreferenceStore(PreferenceStore *store, const QSet<QString> &passThroughKeys)
    : beneath(store), passThrough(passThroughKeys) {}

Value OverlayPreferenceStore::value(const QString &domain, const QString &key) const {
  {
    const std::lock_guard guard(lock);
    const auto layer = layers.constFind(domain);
    if (layer != layers.constEnd() && layer->values.contains(key)) return layer->values.value(key);
  }
  return beneath->value(domain, key);
}

void OverlayPreferenceStore::setValue(const QString &domain, const QString &key, const Value &value) {
  std::function<void(const QString &, const QString &)> told;
  if (passThrough.contains(key)) {
    beneath->setValue(domain, key, value);
  } else {
    const std::lock_guard guard(lock);
    Layer &layer = layers[domain];
    if (!layer.values.contains(key)) layer.order += key;
    layer.values[key] = copyTree(value);
  }
  {
    const std::lock_guard guard(lock);
    told = observer;
  }
  if (told) told(domain, key);
}

QStringList OverlayPreferenceStore::keys(const QString &domain) const {
  QStringList result = beneath->keys(domain);
  const std::lock_guard guard(lock);
  const Layer layer = layers.value(domain);
  for (const QString &key : layer.order) {
    if (layer.values.value(key).isNull()) {
      result.removeAll(key);
    } else if (!result.contains(key)) {
      result += key;
    }
  }
  return result;
}

bool OverlayPreferenceStore::synchronize(QString *error) {
  return beneath->synchronize(error);
}

void OverlayPreferenceStore::setObserver(std::function<void(const QString &, const QString &)> watcher) {
  const std::lock_guard guard(lock);
  observer = std::move(watcher);
}
