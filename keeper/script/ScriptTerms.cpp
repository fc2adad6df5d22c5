#include "keeper/script/ScriptTerms.h"

#include <algorithm>

const ScriptTerms::Term &ScriptTerms::at() {
  const qsizetype place = cursor.start();
  if (place == knownPlace) return known;
  knownPlace = place;
  known = {};
  const int most = std::max(ScriptLanguage::kMostWords, current ? current->mostWords() : 0);
  QStringList words;
  for (int ahead = 0; ahead < most && cursor.peek(ahead).is(ScriptToken::Kind::Word); ++ahead) {
    words.append(cursor.peek(ahead).text);
  }
  if (!words.isEmpty()) lookAt(words);
  return known;
}

void ScriptTerms::lookAt(const QStringList &words) {
  static_cast<ScriptLanguage::Term &>(known) = ScriptLanguage::longestTerm(words);
  // Words of the grammar are never the application's.
  if (!current || cursor.peek().reserved) return;
  const ScriptDictionary::Term term = current->longestTerm(words);
  if (term.kind == ScriptDictionary::Kind::None || term.words < known.words) return;
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
      known.alsoClass = current->hasClass(words.first(term.words).join(u' '));
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
