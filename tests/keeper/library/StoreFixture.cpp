#include "tests/keeper/library/StoreFixture.h"

#include <QFile>

Dictionary StoreFixture::named(const QString &name) {
  const Dictionary keys_ = Dictionary::make();
  keys_.set(keys::Name, name);
  return keys_;
}

QString StoreFixture::namesIn(PlaylistRow playlist) {
  QStringList names;
  for (const PlaylistEntry &entry : store.entries().all(playlist)) names.append(nameOf(entry.track));
  return names.join(u' ');
}

void StoreFixture::reopen() {
  store.close();
  ASSERT_EQ(store.open(storeFolder()), QString());
}

Value treeOf(const QString &xmlPath) {
  QFile file(xmlPath);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QString error;
  return platform().propertyLists->parse(file.readAll(), &error);
}
