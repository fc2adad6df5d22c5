#include "app/state/DeclarationIndex.h"

void DeclarationIndex::add(const Value &declaration) {
  QSet<QString> members;
  for (const Value &member : declaration.toArray()) {
    if (!member.toText().isEmpty()) members.insert(member.toText());
  }
  for (const QString &pid : members) placesByPID[pid].push_back(size());
  declarations.push_back(std::move(members));
}

QSet<QString> DeclarationIndex::declaredWith(const QString &pid) const {
  const auto places = placesByPID.constFind(pid);
  if (places == placesByPID.constEnd()) return {};
  // Most tracks stand in one declaration, whose set is then shared and not copied.
  QSet<QString> all = declarations[size_t(places->front())];
  for (size_t place = 1; place < places->size(); ++place) all += declarations[size_t((*places)[place])];
  return all;
}
