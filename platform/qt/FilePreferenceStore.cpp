#include "platform/qt/FilePreferenceStore.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

#include "platform/AtomicFile.h"
#include "platform/SystemPropertyList.h"

namespace {

/// Holds a file's lock against other processes while it lives. Where no lock can be had (a folder that cannot
/// be written), the write that follows says so.
class FileLock {
 public:
  explicit FileLock(const QString &path)
      : handle(::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    while (handle >= 0 && ::flock(handle, LOCK_EX) != 0 && errno == EINTR) {
    }
  }
  FileLock(const FileLock &) = delete;
  ~FileLock() {
    if (handle >= 0) ::close(handle);
  }

 private:
  const int handle;
};

}  // namespace

FilePreferenceStore::FilePreferenceStore(const QString &store, const SystemPropertyList *lists)
    : folder(store), propertyLists(lists) {}

Value FilePreferenceStore::value(const QString &domain, const QString &key) const {
  const std::lock_guard guard(lock);
  const Key known = Key::find(key);
  const Dictionary &values = refreshed(domain).values;
  // A key may have been read from the file just now.
  return copyTree(values.value(known.isAbsent() ? Key::find(key) : known));
}

void FilePreferenceStore::setValue(const QString &domain, const QString &key, const Value &value) {
  std::function<void(const QString &, const QString &)> told;
  {
    const std::lock_guard guard(lock);
    QDir().mkpath(folder);
    const FileLock others(path(domain) + u".lock"_qs);
    Domain &state = refreshed(domain);
    const Value kept = copyTree(value);
    state.unwritten.removeIf([&](const Change &change) { return change.first == key; });
    state.unwritten.append({key, kept});
    state.values.set(Key(key), kept);
    write(domain, state, false);
    told = observer;
  }
  if (told) told(domain, key);
}

QStringList FilePreferenceStore::keys(const QString &domain) const {
  const std::lock_guard guard(lock);
  QStringList result;
  for (const DictionaryEntry &entry : refreshed(domain).values) result += entry.key.text();
  return result;
}

bool FilePreferenceStore::synchronize(QString *error) {
  const std::lock_guard guard(lock);
  bool done = true;
  const QStringList names = domains.keys();
  for (const QString &domain : names) {
    if (domains[domain].unwritten.isEmpty() && !domains[domain].volatileOnDisk) continue;
    QDir().mkpath(folder);
    const FileLock others(path(domain) + u".lock"_qs);
    Domain &state = refreshed(domain);
    if (write(domain, state, true)) continue;
    if (done && error) *error = state.problem;
    done = false;
  }
  return done;
}

void FilePreferenceStore::setObserver(std::function<void(const QString &, const QString &)> watcher) {
  const std::lock_guard guard(lock);
  observer = std::move(watcher);
}

QString FilePreferenceStore::path(const QString &domain) const {
  QString name = domain;
  return folder + u'/' + name.replace(u'/', u'_') + u".plist"_qs;
}

FilePreferenceStore::Stamp FilePreferenceStore::stampOf(const QString &path) {
  struct stat facts = {};
  if (::stat(QFile::encodeName(path).constData(), &facts) != 0) return {};
  return {qint64(facts.st_ino), qint64(facts.st_size), qint64(facts.st_mtim.tv_sec),
          qint64(facts.st_mtim.tv_nsec)};
}

FilePreferenceStore::Domain &FilePreferenceStore::refreshed(const QString &domain) const {
  Domain &state = domains[domain];
  if (!state.known || stampOf(path(domain)) != state.stamp) read(domain, state);
  return state;
}

void FilePreferenceStore::read(const QString &domain, Domain &state) const {
  // The stamp is taken first: a change while the file is being read shows next time.
  state.stamp = stampOf(path(domain));
  state.known = true;
  state.unreadable = false;
  state.values = Dictionary::make();
  QFile file(path(domain));
  if (file.open(QIODevice::ReadOnly)) {
    const Value root = propertyLists->parse(file.readAll(), nullptr);
    state.unreadable = root.type() != Value::Type::Dictionary;
    if (!state.unreadable) state.values = root.toDictionary();
  }
  // A file that could not be read this time may be sound: it is tried again, and never replaced.
  const bool failed = file.error() != QFileDevice::NoError && file.exists();
  state.readProblem = failed ? file.errorString() : QString();
  if (failed) state.known = state.unreadable = false;
  for (const auto &[key, value] : state.unwritten) state.values.set(Key(key), value);
}

bool FilePreferenceStore::write(const QString &domain, Domain &state, bool durable) {
  state.problem.clear();
  if (!state.readProblem.isEmpty()) {
    state.problem = QStringLiteral("cannot read the settings %1: %2").arg(path(domain), state.readProblem);
    return false;
  }
  if (state.unreadable && !setAside(domain, &state.problem)) return false;
  QList<Change> unwritable;
  const QByteArray bytes = formatted(domain, state, unwritable);
  if (bytes.isEmpty()) return false;
  if (!writeFileAtomically(path(domain), bytes, durable, &state.problem)) return false;
  state.unreadable = false;
  state.unwritten = unwritable;
  state.stamp = stampOf(path(domain));
  state.volatileOnDisk = !durable;
  return unwritable.isEmpty();
}

QByteArray FilePreferenceStore::formatted(const QString &domain, Domain &state,
                                          QList<Change> &unwritable) const {
  constexpr auto kXml = SystemPropertyList::Format::Xml;
  const QByteArray bytes = propertyLists->write(state.values, kXml, nullptr);
  if (!bytes.isEmpty()) return bytes;
  // A value that the format cannot hold must not hold back the others.
  const Dictionary sound = state.values.copyMembers(true);
  for (const Change &change : state.unwritten) {
    QString reason;
    if (change.second.isNull() || !propertyLists->write(change.second, kXml, &reason).isEmpty()) continue;
    unwritable += change;
    sound.remove(Key(change.first));
    state.problem = QStringLiteral("the setting %1 of %2 %3").arg(change.first, path(domain), reason);
  }
  return propertyLists->write(sound, kXml, unwritable.isEmpty() ? &state.problem : nullptr);
}

bool FilePreferenceStore::setAside(const QString &domain, QString *error) const {
  const QString damaged = path(domain) + u".damaged"_qs;
  QString free = damaged;
  for (int number = 2; QFile::exists(free); ++number) free = damaged + QString::number(number);
  QFile file(path(domain));
  if (file.rename(free)) return true;
  *error =
      QStringLiteral("cannot set the damaged settings %1 aside: %2").arg(path(domain), file.errorString());
  return false;
}
