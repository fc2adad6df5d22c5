#pragma once

#include "keeper/script/ScriptCursor.h"
#include "keeper/script/ScriptLanguage.h"
#include "keeper/script/ScriptParser.h"

/// What the words at the cursor mean at this place of the text: terms of the dictionary in whose scope the
/// place lies, terms of the language, labels of the command around it. One thread.
class ScriptTerms {
 public:
  ScriptTerms(ScriptCursor &cursor_, const ScriptDictionaryLookup &lookup_)
      : cursor(cursor_), lookup(lookup_) {}

  struct Term : ScriptLanguage::Term {
    /// A property of whose name there is a class too.
    bool alsoClass = false;
    /// Of a Verb of the dictionary.
    const ScriptVerb *verb = nullptr;
  };
  /// The longest term at the cursor; the dictionary's where the language knows the same words. None for what
  /// is a name.
  const Term &at();
  /// True if a class' term, in singular or plural, is next.
  bool atClass();

  /// How many tokens the label takes that is next, one of the command around the cursor, and which it is; 0
  /// for none.
  int label(QString *which = nullptr);

  /// The dictionary of an application; null if there is none.
  const ScriptDictionary *dictionaryOf(const QString &application) const { return lookup(application); }

  /// While it lives the cursor is in the scope of a dictionary; null for none.
  class Scope {
   public:
    Scope(ScriptTerms &terms_, const ScriptDictionary *dictionary);
    ~Scope();
    Scope(const Scope &) = delete;
    Scope &operator=(const Scope &) = delete;

   private:
    ScriptTerms &terms;
    const ScriptDictionary *before;
  };
  const ScriptDictionary *dictionary() const { return current; }

  /// While it lives the cursor is among the parameters of a command; null inside brackets.
  class Parameters {
   public:
    Parameters(ScriptTerms &terms_, const ScriptVerb *verb) : terms(terms_), before(terms_.verb) {
      terms.verb = verb;
    }
    ~Parameters() { terms.verb = before; }
    Parameters(const Parameters &) = delete;
    Parameters &operator=(const Parameters &) = delete;

   private:
    ScriptTerms &terms;
    const ScriptVerb *before;
  };

 private:
  void lookAt();
  void know(const ScriptDictionary::Term &term);

  ScriptCursor &cursor;
  const ScriptDictionaryLookup &lookup;
  const ScriptDictionary *current = nullptr;
  const ScriptVerb *verb = nullptr;
  /// Of the token that begins at this place.
  qsizetype knownPlace = -1;
  Term known;
};
