#pragma once

#include <QHash>
#include <QSet>
#include <mutex>

#include "platform/PreferenceStore.h"

/// Preferences that are laid over another store and end with the process: what is set here stays in memory
/// and hides the other store's value, a removal too. Keys named as passing through are the other store's
/// alone.
class OverlayPreferenceStore : public PreferenceStore {
 public:
  /// The store beneath must outlive this one.
  OverlayPreferenceStore(PreferenceStore *beneath, const QSet<QString> &passThroughKeys);

  Value value(const QString &domain, const QString &key) const override;
  void setValue(const QString &domain, const QString &key, const Value &value) override;
  QStringList keys(const QString &domain) const override;
  bool synchronize(QString *error) override;
  void setObserver(std::function<void(const QString &, const QString &)> observer) override;

 private:
  struct Layer {
    QStringList order;
    QHash<QString, Value> values;  // a null value hides
  };
  PreferenceStore *const beneath;
  const QSet<QString> passThrough;
  mutable std::mutex lock;
  QHash<QString, Layer> layers;
  std::function<void(const QString &, const QString &)> observer;
};
