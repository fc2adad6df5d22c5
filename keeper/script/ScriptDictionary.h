#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include "keeper/script/ScriptTermTable.h"

/// A class of things that scripts speak of. Terms are in lower case, words parted by one blank.
struct ScriptClass {
  QString term;
  QString plural;
  /// The class whose properties and elements it has as well; empty for none.
  QString parent;
};

/// A command of an application.
struct ScriptVerb {
  QString term;
  /// The words that introduce its labelled parameters: "to", "at", "with properties".
  QStringList parameters;
};

/// The words that an application adds to the language inside a `tell` block. Filled once, then only read; any
/// thread.
class ScriptDictionary {
 public:
  void addClass(const ScriptClass &scriptClass);
  void addProperty(const QString &term);
  /// Two spellings of one property: `loved` for `favorited`.
  void addSynonym(const QString &term, const QString &meaning);
  void addConstant(const QString &term);
  void addVerb(const ScriptVerb &verb);

  enum class Kind { None, Class, Plural, Property, Constant, Verb };
  struct Term {
    Kind kind = Kind::None;
    /// The class' singular, the property, the constant or the command.
    QString meaning;
    /// How many words of the text it takes.
    int words = 0;
    /// A class has this spelling, whatever else it means.
    bool alsoClass = false;
  };
  /// The longest term that the words, in lower case, begin with; a word that is property and class counts as
  /// a property.
  Term longestTerm(const QStringList &words) const;
  /// The same for a text that is asked word by word.
  const ScriptTermTable<Term> &table() const { return terms; }

  const ScriptVerb *verb(const QString &term) const;
  /// True if a class is the other or descends from it.
  bool isKindOf(const QString &term, const QString &ancestor) const;

 private:
  void add(const QString &term, Kind kind, const QString &meaning);

  ScriptTermTable<Term> terms;
  QHash<QString, ScriptClass> classes;
  QHash<QString, ScriptVerb> verbs;
};
