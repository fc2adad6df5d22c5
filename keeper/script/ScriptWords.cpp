#include "keeper/script/ScriptWords.h"

#include <QSet>
#include <cstring>

#include "keeper/script/WordFilter.h"

namespace {

/// The words of the grammar; their letters are the program's own, which all threads share without counting.
struct Reserved {
  Reserved() {
    for (const QString &word : words) filter.add(word);
  }

  const QSet<QString> words = {
      u"about"_qs,  u"above"_qs,    u"after"_qs,    u"against"_qs,  u"and"_qs,         u"apart"_qs,
      u"around"_qs, u"as"_qs,       u"aside"_qs,    u"at"_qs,       u"before"_qs,      u"beginning"_qs,
      u"behind"_qs, u"below"_qs,    u"beneath"_qs,  u"beside"_qs,   u"between"_qs,     u"but"_qs,
      u"by"_qs,     u"contain"_qs,  u"contains"_qs, u"continue"_qs, u"considering"_qs, u"copy"_qs,
      u"count"_qs,  u"div"_qs,      u"does"_qs,     u"doesn't"_qs,  u"eighth"_qs,      u"else"_qs,
      u"end"_qs,    u"equal"_qs,    u"equals"_qs,   u"error"_qs,    u"every"_qs,       u"exists"_qs,
      u"exit"_qs,   u"false"_qs,    u"fifth"_qs,    u"first"_qs,    u"for"_qs,         u"fourth"_qs,
      u"from"_qs,   u"get"_qs,      u"given"_qs,    u"global"_qs,   u"if"_qs,          u"ignoring"_qs,
      u"in"_qs,     u"instead"_qs,  u"into"_qs,     u"is"_qs,       u"isn't"_qs,       u"it"_qs,
      u"its"_qs,    u"last"_qs,     u"local"_qs,    u"me"_qs,       u"middle"_qs,      u"mod"_qs,
      u"my"_qs,     u"ninth"_qs,    u"not"_qs,      u"of"_qs,       u"on"_qs,          u"onto"_qs,
      u"or"_qs,     u"property"_qs, u"repeat"_qs,   u"return"_qs,   u"returning"_qs,   u"script"_qs,
      u"second"_qs, u"set"_qs,      u"seventh"_qs,  u"since"_qs,    u"sixth"_qs,       u"some"_qs,
      u"tell"_qs,   u"tenth"_qs,    u"that"_qs,     u"then"_qs,     u"third"_qs,       u"through"_qs,
      u"thru"_qs,   u"timeout"_qs,  u"times"_qs,    u"to"_qs,       u"true"_qs,        u"try"_qs,
      u"until"_qs,  u"using"_qs,    u"where"_qs,    u"while"_qs,    u"whose"_qs,       u"with"_qs,
      u"without"_qs};
  WordFilter filter;
};

void fill(ScriptWords::Word &word, QStringView text, quint32 hash) {
  static const Reserved reserved;
  word.hash = hash;
  word.reserved = false;
  if (reserved.filter.mayHold(hash)) {
    const auto found = reserved.words.constFind(QString::fromRawData(text.data(), text.size()));
    word.reserved = found != reserved.words.cend();
    if (word.reserved) {
      word.text = *found;
      return;
    }
  }
  word.text = text.toString();
}

}  // namespace

const ScriptWords::Word &ScriptWords::of(QStringView written) {
  const qsizetype size = written.size();
  if (size > kLongest) return unusual(written);
  char16_t lower[kLongest];
  char16_t all = 0;
  quint32 hash = 0;
  for (qsizetype i = 0; i < size; ++i) {
    char16_t unit = written[i].unicode();
    all |= unit;
    if (unit >= u'A' && unit <= u'Z') unit |= 0x20;
    lower[i] = unit;
    hash = WordFilter::hashOf(hash, unit);
  }
  if (all >= 0x80) return unusual(written);
  Word &word = seen[WordFilter::spread(hash) >> (32 - kPlaceBits)];
  const bool same = word.hash == hash && word.text.size() == size &&
                    std::memcmp(word.text.constData(), lower, size_t(size) * sizeof(char16_t)) == 0;
  if (!same) fill(word, QStringView(lower, size), hash);
  return word;
}

/// A long word, or one of letters beyond the first alphabet.
const ScriptWords::Word &ScriptWords::unusual(QStringView written) {
  const QString text = written.toString().toLower();
  fill(last, text, WordFilter::hashOf(text));
  return last;
}
