#include "text/Metaphone.h"

#include <QVarLengthArray>
#include <array>
#include <exception>
#include <string_view>

#include "support/BMLog.h"
#include "text/PlainAscii.h"
#include "text/Whitespace.h"
#include "text/Words.h"

namespace {

using Units = QVarLengthArray<char16_t, 128>;

bool isOneOf(char16_t unit, std::u16string_view set) {
  return unit != 0 && set.find(unit) != std::u16string_view::npos;
}

/// A place in a word and what stands around it. What looks ahead is absent (0) past the word's end; what
/// looks back is absent at the first and also at the last letter.
struct Place {
  Place(std::u16string_view word, size_t at)
      : hasNext(at + 1 < word.size()),
        isFirst(at == 0),
        letter(word.at(at)),
        next(hasNext ? word.at(at + 1) : u'\0'),
        hasAfterNext(at + 2 < word.size()),
        afterNext(hasAfterNext ? word.at(at + 2) : u'\0'),
        left(isFirst ? u'\0' : word.at(at - 1)),
        previous(hasNext ? left : u'\0') {}

  bool nextIsFront() const { return isOneOf(next, u"iey"); }

  bool hasNext, isFirst;
  char16_t letter, next;
  bool hasAfterNext;
  char16_t afterNext;
  /// The letter to the left, at the last letter too.
  char16_t left;
  char16_t previous;
};

constexpr std::u16string_view kSilent;

std::u16string_view codeOfC(const Place &at) {
  if (at.previous == u's' && at.nextIsFront()) return kSilent;
  if (at.next == u'i' && at.afterNext == u'a') return u"x";
  return at.nextIsFront() ? u"s" : u"k";
}

std::u16string_view codeOfG(const Place &at) {
  if (at.next == u'h') return at.hasAfterNext ? u"k" : kSilent;
  if (at.next == u'n') return kSilent;
  if (at.previous == u'd' && at.nextIsFront()) return kSilent;
  return at.nextIsFront() ? u"j" : u"k";
}

std::u16string_view codeOfH(const Place &at) {
  if (isOneOf(at.previous, u"aeiouy") && !isOneOf(at.next, u"aeiouy")) return kSilent;
  return isOneOf(at.previous, u"csptg") ? kSilent : u"h";
}

std::u16string_view codeOfS(const Place &at) {
  if (at.next == u'h') return u"x";
  return at.next == u'i' && isOneOf(at.afterNext, u"ao") ? u"x" : u"s";
}

std::u16string_view codeOfT(const Place &at) {
  if (at.next == u'i' && isOneOf(at.afterNext, u"ao")) return u"x";
  return at.next == u'h' ? u"0" : u"t";
}

/// The code of one letter; a letter without a rule is its own.
std::u16string_view codeAt(const Place &at) {
  const std::u16string_view itself(&at.letter, 1);
  switch (at.letter) {
    case u'a':
    case u'e':
    case u'i':
    case u'o':
    case u'u':
      return at.isFirst ? itself : kSilent;
    case u'b':
      return !at.hasNext && at.left == u'm' ? kSilent : itself;
    case u'c':
      return codeOfC(at);
    case u'd':
      return at.next == u'g' && isOneOf(at.afterNext, u"iey") ? u"j" : u"t";
    case u'g':
      return codeOfG(at);
    case u'h':
      return codeOfH(at);
    case u'k':
      return at.previous == u'c' ? kSilent : itself;
    case u'p':
      return at.next == u'h' ? u"f" : itself;
    case u'q':
      return u"k";
    case u's':
      return codeOfS(at);
    case u't':
      return codeOfT(at);
    case u'v':
      return u"f";
    case u'w':
      return at.hasNext && !isOneOf(at.next, u"aeiouy") ? kSilent : itself;
    case u'x':
      return u"ks";
    case u'z':
      return u"s";
    default:
      return itself;
  }
}

/// The word in lower-case ASCII without blanks, each run of one character as one.
void collapse(QStringView word, Units &out) {
  char16_t seen = 0;
  for (const QChar unit : word) {
    char16_t code = unit.unicode();
    seen |= code;
    if (code >= u'A' && code <= u'Z') code += 0x20;
    if (code != u' ' && (out.isEmpty() || out.back() != code)) out.append(code);
  }
  if (seen < 0x80) return;
  out.clear();
  const QString folded = plainASCIIString(word.toString()).toLower();
  for (const QChar unit : folded) {
    const char16_t code = unit.unicode();
    if (code != u' ' && (out.isEmpty() || out.back() != code)) out.append(code);
  }
}

/// What an initial pair sounds like; 0 for a pair that is spoken as it is written.
char16_t initialPair(std::u16string_view word) {
  static constexpr struct {
    char16_t first, second, code;
  } kPairs[] = {{u'a', u'e', u'e'}, {u'g', u'n', u'n'}, {u'k', u'n', u'n'},
                {u'p', u'n', u'n'}, {u'w', u'r', u'n'}, {u'w', u'h', u'w'}};
  for (const auto &pair : kPairs) {
    if (word.size() >= 2 && word[0] == pair.first && word[1] == pair.second) return pair.code;
  }
  return 0;
}

/// Appends the key of a word.
void appendKey(QStringView text, Units &key) {
  Units collapsed;
  collapse(text, collapsed);
  std::u16string_view word(collapsed.constData(), size_t(collapsed.size()));
  if (const char16_t initial = initialPair(word); initial != 0) {
    key.append(initial);
    word.remove_prefix(2);
  } else if (word == u"x") {
    key.append(u's');
    word = {};
  }
  for (size_t i = 0; i < word.size(); ++i) {
    try {
      const Place place(word, i);
      for (const char16_t unit : codeAt(place)) key.append(unit);
    } catch (const std::exception &exception) {
      BMLog("metaphoneWord \"%@\": %@", text.toString(), QString::fromUtf8(exception.what()));
      key.append(word[i]);
    }
  }
}

QString textOf(const Units &units) {
  return QString(reinterpret_cast<const QChar *>(units.constData()), units.size());
}

}  // namespace

QString metaphoneWord(const QString &word) {
  Units key;
  appendKey(word, key);
  return textOf(key);
}

QString metaphoneWithoutMinorWords(const QString &phrase, bool withoutMinorWords) {
  QString text = trimmedOfWhitespace(phrase);
  if (withoutMinorWords) text = stringWithoutWords(text, minorWords());
  Units key;
  for (const QStringView piece : QStringView(text).tokenize(u' ')) {
    if (!key.isEmpty()) key.append(u' ');
    appendKey(piece, key);
  }
  return textOf(key);
}

QString metaphone(const QString &phrase) {
  return metaphoneWithoutMinorWords(phrase, false);
}

QString metaphoneNoMinorWords(const QString &phrase) {
  return metaphoneWithoutMinorWords(phrase, true);
}
