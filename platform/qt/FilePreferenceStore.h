#pragma once

#include <QHash>
#include <mutex>

#include "platform/PreferenceStore.h"

class SystemPropertyList;

/// Preferences in one XML property-list file for each domain, "<domain>.plist" in a folder that is made when
/// first needed. Each change is written at once, the file replaced whole; several processes may share the
/// folder: a file that another has changed is read again, and changes are made under a lock file. A file that
/// is no property list is set aside as "<domain>.plist.damaged" (or "...damaged2" and so on) before anything
/// is written in its place.
class FilePreferenceStore : public PreferenceStore {
 public:
  /// The property lists' service must outlive the store.
  FilePreferenceStore(const QString &folder, const SystemPropertyList *propertyLists);

  Value value(const QString &domain, const QString &key) const override;
  void setValue(const QString &domain, const QString &key, const Value &value) override;
  QStringList keys(const QString &domain) const override;
  bool synchronize(QString *error) override;
  void setObserver(std::function<void(const QString &, const QString &)> observer) override;

 private:
  /// What tells one state of a file from another.
  struct Stamp {
    qint64 inode = -1, size = -1, seconds = 0, nanoseconds = 0;
    bool operator==(const Stamp &) const = default;
  };
  using Change = std::pair<QString, Value>;
  struct Domain {
    bool known = false;
    Stamp stamp;
    Dictionary values;
    /// Changes that the file does not have yet; a null value stands for a removal.
    QList<Change> unwritten;
    /// There is a file that is no property list.
    bool unreadable = false;
    /// Why there is a file that cannot be read at all.
    QString readProblem;
    /// The file holds all changes but may not have reached the disk.
    bool volatileOnDisk = false;
    QString problem;
  };

  QString path(const QString &domain) const;
  static Stamp stampOf(const QString &path);
  Domain &refreshed(const QString &domain) const;
  void read(const QString &domain, Domain &state) const;
  bool write(const QString &domain, Domain &state, bool durable);
  /// The domain's bytes without the changes that the format cannot hold, which are put on the list.
  QByteArray formatted(const QString &domain, Domain &state, QList<Change> &unwritable) const;
  bool setAside(const QString &domain, QString *error) const;

  const QString folder;
  const SystemPropertyList *const propertyLists;
  mutable std::mutex lock;
  mutable QHash<QString, Domain> domains;
  std::function<void(const QString &, const QString &)> observer;
};
