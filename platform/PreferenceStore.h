#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "values/Value.h"

/// Settings that outlive the process: named domains, each a set of keys with property-list values. Any
/// thread.
class PreferenceStore {
 public:
  virtual ~PreferenceStore() = default;
  /// The value, or null if the domain, the key or a readable store is missing.
  virtual Value value(const QString &domain, const QString &key) const = 0;
  /// Stores a value at once, or removes the key with a null value. What cannot be written is kept in memory
  /// for this process and tried again by `synchronize`.
  virtual void setValue(const QString &domain, const QString &key, const Value &value) = 0;
  /// The domain's keys, in order of the first writing; none for an unknown domain.
  virtual QStringList keys(const QString &domain) const = 0;
  /// Makes all that was stored survive a loss of power. False with a line for the user in `error`.
  virtual bool synchronize(QString *error) = 0;
  /// Called on the thread of each `setValue` after it, with domain and key. One observer; empty for none.
  virtual void setObserver(std::function<void(const QString &, const QString &)> observer) = 0;
};
