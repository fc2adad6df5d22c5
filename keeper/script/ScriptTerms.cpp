#include "keeper/script/ScriptTerms.h"

#include <algorithm>

const ScriptTerms::Term &ScriptTerms::at() {
  const qsizetype place = cursor.start();
  if (place == knownPlace) return known;
  knownPlace = place;
  if (known.words > 0) known = {};
  // As far as any term could go, whether one begins here or not: a text that cannot be read further fails at
  // the same place either way.
  const int most = std::max(ScriptLanguage::table().mostWords(), current ? current->table().mostWords() : 0);
  int words = 0;
  while (words < most && cursor.peek(words).is(ScriptToken::Kind::Word)) ++words;
  if (words > 0) lookAt();
  return known;
}

void ScriptTerms::lookAt() {
  const ScriptToken &first = cursor.peek();
  const auto isWord = [this](int ahead, const QString &word) { return cursor.peek(ahead).isWord(word); };
  if (const auto *term = ScriptLanguage::table().longestTerm(first.text, first.hash, isWord)) {
    static_cast<ScriptLanguage::Term &>(known) = *term;
  }
  // Words of the grammar are never the application's.
  if (!current || first.reserved) return;
  const ScriptDictionary::Term *term = current->table().longestTerm(first.text, first.hash, isWord);
  if (term && term->words >= known.words) know(*term);
}

/// A term of the dictionary.
void ScriptTerms::know(const ScriptDictionary::Term &term) {
  known = {};
  known.meaning = term.meaning;
  known.words = term.words;
  switch (term.kind) {
    case ScriptDictionary::Kind::Class:
      known.kind = Term::Kind::Class;
      break;
    case ScriptDictionary::Kind::Plural:
      known.kind = Term::Kind::Plural;
      break;
    case ScriptDictionary::Kind::Property:
      known.kind = Term::Kind::Property;
      known.alsoClass = term.alsoClass;
      break;
    case ScriptDictionary::Kind::Constant:
      known.kind = Term::Kind::Value;
      known.value = ScriptConstant{term.meaning};
      break;
    case ScriptDictionary::Kind::Verb:
      known.kind = Term::Kind::Verb;
      known.verb = current->verb(term.meaning);
      break;
    case ScriptDictionary::Kind::None:
      break;
  }
}

bool ScriptTerms::atClass() {
  const Term &term = at();
  return term.kind == Term::Kind::Class || term.kind == Term::Kind::Plural || term.alsoClass;
}

int ScriptTerms::label(QString *which) {
  if (!verb) return 0;
  int longest = 0;
  for (const QString &label : verb->parameters) {
    const QStringList words = label.split(u' ');
    int count = 0;
    while (count < words.size() && cursor.peek(count).isWord(words[count])) ++count;
    if (count < words.size() || count <= longest) continue;
    longest = count;
    if (which) *which = label;
  }
  return longest;
}

ScriptTerms::Scope::Scope(ScriptTerms &terms_, const ScriptDictionary *dictionary)
    : terms(terms_), before(terms_.current) {
  terms.current = dictionary;
  terms.knownPlace = -1;
}

ScriptTerms::Scope::~Scope() {
  terms.current = before;
  terms.knownPlace = -1;
}
