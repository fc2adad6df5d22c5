#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <vector>

#include "values/Value.h"

/// Finds the declarations that a persistent ID stands in. Empty texts and members that are no texts stand for
/// no track and are left out. Not locked.
class DeclarationIndex {
 public:
  /// Takes in one more declaration: a list of persistent IDs. Anything else counts as an empty one.
  void add(const Value &declaration);
  /// The number of declarations taken in.
  qsizetype size() const { return qsizetype(declarations.size()); }
  /// All members of all declarations that hold the ID, itself included; empty if there is none.
  QSet<QString> declaredWith(const QString &pid) const;

 private:
  std::vector<QSet<QString>> declarations;
  QHash<QString, std::vector<qsizetype>> placesByPID;
};
