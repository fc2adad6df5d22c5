#include "app/state/IgnoredDuplicates.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "app/state/AppState.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Preferences.h"
#include "values/Keys.h"

namespace {

bool isList(const Value &value) {
  return value.type() == Value::Type::Array;
}

/// The path with the home folder as "~".
QString withTilde(const QString &path) {
  const QString &home = platform().folders.home;
  const bool isHome = !home.isEmpty() && (path == home || path.startsWith(home + u'/'));
  return isHome ? u'~' + path.mid(home.size()) : path;
}

QString persistentIDOf(const Dictionary &library) {
  return library.value(keys::LibraryPersistentID).toText();
}

}  // namespace

QString IgnoredDuplicates::ignoredDuplicatePIDsPrefsKey() {
  const std::lock_guard held(guard);
  return fixedPrefsKey();
}

QString IgnoredDuplicates::ignoredDuplicatePIDsPath() const {
  return QStringLiteral("%1/Library/Preferences/%2.%3.plist")
      .arg(platform().folders.home, platform().bundle.identifier,
           persistentIDOf(state.library.mMusicLibrary));
}

const QString &IgnoredDuplicates::fixedPrefsKey() {
  if (!prefsKey.isEmpty()) return prefsKey;
  QString name = withTilde(musicLibraryMediaFolderWithFallbacks(state));
  if (name.isEmpty()) name = persistentIDOf(state.library.mMusicLibrary);
  prefsKey = QStringLiteral("NotDup-") + name;
  // Of the same library as the key, and fixed with it: a scan's thread may do the loading.
  formerPath = ignoredDuplicatePIDsPath();
  return prefsKey;
}

Array IgnoredDuplicates::ignoredDuplicatePIDsArray() {
  const std::lock_guard held(guard);
  return loaded();
}

const Array &IgnoredDuplicates::loaded() {
  if (!declarations.isNull()) return declarations;
  const QString &key = fixedPrefsKey();
  Value stored = prefs::value(key);
  if (stored.isNull()) {
    stored = formerDeclarations();
    if (!isList(stored)) stored = Array::make();
    prefs::set(key, stored);
  } else if (!isList(stored)) {
    BMLog("!! the preference %@ is no list of declarations; it will be kept under another name", key);
    foreignValue = stored;
  }
  declarations = isList(stored) ? stored.toArray().copyMembers(true) : Array::make();
  loadedDeclarations = declarations.copyMembers(false);
  logForeignMembers();
  return declarations;
}

void IgnoredDuplicates::logForeignMembers() const {
  int foreign = 0;
  for (const Value &declaration : declarations) foreign += isList(declaration) ? 0 : 1;
  if (foreign) {
    BMLog("!! %d of %d declarations in %@ are no lists and are left alone", foreign, declarations.size(),
          prefsKey);
  }
}

Value IgnoredDuplicates::formerDeclarations() const {
  const Value former = arrayFromPlistFile(formerPath);
  if (!former.isNull() && !isList(former)) BMLog("!! %@ holds no list of declarations", formerPath);
  if (!former.isNull() || !iTunesInterface::haveDirectLibraryAccess()) return former;
  return arrayFromOlderFiles(QFileInfo(formerPath).path());
}

Value IgnoredDuplicates::arrayFromOlderFiles(const QString &folder) {
  const QString prefix = QStringLiteral("com.brinmoor.tallyfen.");
  const QStringList names =
      QDir(folder).entryList({prefix + u'*'}, QDir::Files | QDir::Hidden | QDir::CaseSensitive, QDir::Name);
  for (auto name = names.crbegin(); name != names.crend(); ++name) {
    if (*name == prefix + QStringLiteral("plist")) continue;
    const Value found = arrayFromPlistFile(folder + u'/' + *name);
    if (isList(found)) return found;
  }
  return {};
}

Value IgnoredDuplicates::arrayFromPlistFile(const QString &path) {
  QFile file(path);
  // What is no ordinary file, such as a pipe, could hold up the caller for ever.
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return {};
  const QByteArray bytes = file.readAll();
  if (bytes.isEmpty()) return {};
  QString error;
  const Value root = platform().propertyLists->parse(bytes, &error);
  if (root.isNull()) BMLog("!! %@ is no property list: %@", path, error);
  return root;
}

QSet<QString> IgnoredDuplicates::ignoredDuplicatesForPID(const QString &pid) {
  if (pid.isEmpty()) return {};
  const std::lock_guard held(guard);
  const Array &all = loaded();
  while (index.size() < all.size()) index.add(all.at(index.size()));
  return index.declaredWith(pid);
}

void IgnoredDuplicates::addIgnoredDuplicatePIDs(const Array &pids) {
  const std::lock_guard held(guard);
  if (!pids.isNull()) loaded().append(pids.copyMembers(false));
}

void IgnoredDuplicates::clear() {
  const std::lock_guard held(guard);
  loaded();
  declarations = Array::make();
  loadedDeclarations = {};
  index = {};
}

Array IgnoredDuplicates::declarationsToStore() const {
  const Value stored = prefs::value(prefsKey);
  const bool isOurs = loadedDeclarations.isNull() || !isList(stored) || isEqual(stored, loadedDeclarations);
  if (isOurs) return declarations;
  const Array both = stored.toArray().copyMembers(true);
  for (qsizetype added = loadedDeclarations.size(); added < declarations.size(); ++added) {
    both.append(declarations.at(added));
  }
  return both;
}

void IgnoredDuplicates::writeIgnoredDuplicatePIDs() {
  const std::lock_guard held(guard);
  if (declarations.isNull()) return;
  setForeignValueAside();
  prefs::set(prefsKey, declarationsToStore());
  declarations = loadedDeclarations = {};
  index = {};
}

void IgnoredDuplicates::setForeignValueAside() {
  if (foreignValue.isNull()) return;
  const QString aside = prefsKey + QStringLiteral("-foreign");
  QString free = aside;
  for (int number = 2; !prefs::value(free).isNull(); ++number) free = aside + QString::number(number);
  prefs::set(free, foreignValue);
  foreignValue = {};
}
