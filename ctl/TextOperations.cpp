#include "ctl/TextOperations.h"

#include <QHash>
#include <charconv>
#include <functional>

#include "ctl/RequestArguments.h"
#include "scanners/InconNameController.h"
#include "support/ByteSearch.h"
#include "support/Checksum.h"
#include "support/FormatCount.h"
#include "support/Hexadecimal.h"
#include "support/Trash.h"
#include "text/AmpersandCodes.h"
#include "text/Characters.h"
#include "text/Enclosed.h"
#include "text/Html.h"
#include "text/Levenshtein.h"
#include "text/Metaphone.h"
#include "text/PlainAscii.h"
#include "text/PlistDate.h"
#include "text/Search.h"
#include "text/Simplified.h"
#include "text/Whitespace.h"
#include "text/Words.h"
#include "values/Keys.h"

namespace {

const Key kOp(u"op"), kArgs(u"args"), kIgnorePlurals(u"ignorePlurals"), kCode(u"code"), kLength(u"length");

using Operation = std::function<Value(RequestArguments &)>;

/// An operation of a text without other arguments. An absent text gives nothing.
Operation ofText(QString (*operation)(const QString &)) {
  return [operation](RequestArguments &arguments) -> Value {
    const std::optional<QString> text = arguments.text();
    return text && !arguments.hasFailed() ? Value(operation(*text)) : Value();
  };
}

/// A test of a text with another, which may be absent. False for an absent text.
Operation ofTwoTexts(bool (*test)(const QString &, const QString &)) {
  return [test](RequestArguments &arguments) -> Value {
    const std::optional<QString> text = arguments.text(), other = arguments.text();
    return text && test(*text, other.value_or(QString()));
  };
}

/// A test of a text. False for an absent one.
Operation ofTest(bool (*test)(const QString &)) {
  return [test](RequestArguments &arguments) -> Value {
    const std::optional<QString> text = arguments.text();
    return text && test(*text);
  };
}

/// An operation of bytes. Absent bytes give nothing.
Operation ofBytes(Value (*operation)(QByteArrayView)) {
  return [operation](RequestArguments &arguments) -> Value {
    const std::optional<QByteArray> bytes = arguments.bytes();
    return bytes ? operation(*bytes) : Value();
  };
}

Value listOf(const QStringList &texts) {
  const Array list = Array::make();
  for (const QString &text : texts) list.append(text);
  return list;
}

Value withoutWords(RequestArguments &arguments) {
  const std::optional<QString> text = arguments.text();
  const QStringList words = arguments.texts();
  return text ? Value(stringWithoutWords(*text, words)) : Value();
}

Value withoutCharacters(RequestArguments &arguments) {
  const std::optional<QString> text = arguments.text(), set = arguments.text();
  return text ? Value(stringByDeletingCharactersInSet(*text, set.value_or(QString()))) : Value();
}

Value withoutEnclosed(RequestArguments &arguments) {
  const std::optional<QString> text = arguments.text();
  const QChar from = arguments.character(), to = arguments.character();
  return text ? Value(stringWithStrippedEnclosedByCharToChar(*text, from, to)) : Value();
}

Value reversedOrder(RequestArguments &arguments) {
  const std::optional<QString> text = arguments.text(), other = arguments.text();
  return text && other ? Value(int(reversedCompare(*text, *other))) : Value();
}

/// A 32-bit number as the shortest decimal that means it, as people write it.
Value shortest(float number) {
  char text[32];
  const auto written = std::to_chars(text, text + sizeof text, number);
  return QByteArray(text, written.ptr - text).toDouble();
}

Value distance(RequestArguments &arguments) {
  const std::optional<QString> text = arguments.text(), other = arguments.text();
  const bool isGood = text && !arguments.hasFailed();
  return isGood ? shortest(levenshteinCompareWithWord(*text, other.value_or(QString()))) : Value();
}

Value phraseDistance(RequestArguments &arguments) {
  const std::optional<QString> text = arguments.text(), other = arguments.text();
  const auto seconds = float(arguments.number());
  const bool isGood = text && !arguments.hasFailed();
  return isGood ? shortest(levenshteinComparePhrase(*text, other.value_or(QString()), seconds)) : Value();
}

Value phraseKey(RequestArguments &arguments) {
  const std::optional<QString> text = arguments.text();
  const bool withoutMinorWords = arguments.boolean();
  return text ? Value(metaphoneWithoutMinorWords(*text, withoutMinorWords)) : Value();
}

/// The code and the length of the entity at an index.
Value entityAt(RequestArguments &arguments) {
  const std::optional<QString> text = arguments.text();
  const double index = arguments.number();
  const bool isIndex = text && index >= 0 && index < double(text->size());
  const AmpersandCode entity =
      isIndex ? ampersandCodeEquivalentAtIndexCodeLength(*text, qsizetype(index)) : AmpersandCode();
  const Dictionary answer = Dictionary::make();
  answer.set(kCode, int(entity.code));
  answer.set(kLength, int(entity.length));
  return text ? Value(answer) : Value();
}

/// The options are null, "literal" or "caseInsensitive".
Value replaced(RequestArguments &arguments) {
  const std::optional<QString> text = arguments.text(), target = arguments.text(),
                               replacement = arguments.text();
  const bool isLiteral = arguments.text().value_or(QString()) != u"caseInsensitive";
  const SearchOption option = isLiteral ? SearchOption::Literal : SearchOption::CaseInsensitive;
  return text ? Value(stringByReplacingOccurrencesOfStringWithStringOptions(
                    *text, target.value_or(QString()), replacement.value_or(QString()), option))
              : Value();
}

Value dataIsIn(RequestArguments &arguments) {
  const std::optional<QByteArray> bytes = arguments.bytes(), pattern = arguments.bytes();
  if (!bytes) return false;
  return containsData(*bytes, pattern ? std::optional<QByteArrayView>(*pattern) : std::nullopt);
}

Value dateOf(RequestArguments &arguments) {
  const std::optional<QString> text = arguments.text();
  const std::optional<Date> date = text ? plistDateValue(*text) : std::nullopt;
  return date ? Value(date->toIsoText()) : Value();
}

Value scoreOfName(RequestArguments &arguments) {
  const std::optional<QString> name = arguments.text();
  if (!name) return 0;
  return int(InconNameController::nameScore(name->isNull() ? QStringLiteral("") : *name));
}

const QHash<QString, Operation> &operations() {
  static const QHash<QString, Operation> table = {
      {QStringLiteral("simplified"), ofText(simplified)},
      {QStringLiteral("isSimpleEqualTo"), ofTwoTexts(isSimpleEqualTo)},
      {QStringLiteral("stringWithoutWords"), withoutWords},
      {QStringLiteral("minorWords"), [](RequestArguments &) { return listOf(minorWords()); }},
      {QStringLiteral("plainASCIIString"), ofText(plainASCIIString)},
      {QStringLiteral("precomposedBMString"), ofText(precomposedBMString)},
      {QStringLiteral("stringByDeletingCharactersInSet"), withoutCharacters},
      {QStringLiteral("containsString"), ofTwoTexts(containsString)},
      {QStringLiteral("stringWithStrippedEnclosedByChar"), withoutEnclosed},
      {QStringLiteral("stringWithStrippedEnclosedByCharToChar"), withoutEnclosed},
      {QStringLiteral("stringWithStrippedBracketedText"), ofText(stringWithStrippedBracketedText)},
      {QStringLiteral("stringWithStrippedParenthesizedText"), ofText(stringWithStrippedParenthesizedText)},
      {QStringLiteral("correctedCaseString"), ofText(correctedCaseString)},
      {QStringLiteral("capitalizedString"), ofText(capitalizedString)},
      {QStringLiteral("nameScore"), scoreOfName},
      {QStringLiteral("normalizedString"), ofText(normalizedString)},
      {QStringLiteral("reversedCompare"), reversedOrder},
      {QStringLiteral("capitalizedPhraseString"), ofText(capitalizedPhraseString)},
      {QStringLiteral("metaphoneWord"), ofText(metaphoneWord)},
      {QStringLiteral("metaphone"), ofText(metaphone)},
      {QStringLiteral("metaphoneNoMinorWords"), ofText(metaphoneNoMinorWords)},
      {QStringLiteral("metaphoneWithoutMinorWords"), phraseKey},
      {QStringLiteral("levenshtein"), distance},
      {QStringLiteral("levenshteinCompareWithWord"), distance},
      {QStringLiteral("phraseCompare"), phraseDistance},
      {QStringLiteral("ampersandCodeEquivalentAtIndex"), entityAt},
      {QStringLiteral("ampersandCodeEquivalentAtIndexCodeLength"), entityAt},
      {QStringLiteral("stringByReplacingAmpersandCodes"), ofText(stringByReplacingAmpersandCodes)},
      {QStringLiteral("stringByInsertingAmpersandCodes"), ofText(stringByInsertingAmpersandCodes)},
      {QStringLiteral("stringFlowedFromHTML"), ofText(stringFlowedFromHTML)},
      {QStringLiteral("containsZeroWidthCharacter"), ofTest(containsZeroWidthCharacter)},
      {QStringLiteral("stringWithVisibleZeroWidthCharacters"), ofText(stringWithVisibleZeroWidthCharacters)},
      {QStringLiteral("containsRedundantWhitespace"), ofTest(containsRedundantWhitespace)},
      {QStringLiteral("stringByRemovingSurroundingQuotes"), ofText(stringByRemovingSurroundingQuotes)},
      {QStringLiteral("stringByReplacingOccurrencesOfString"), replaced},
      {QStringLiteral("stringByReplacingOccurrencesOfStringWithStringOptions"), replaced},
      {QStringLiteral("pathIsInTrash"), ofTest(pathIsInTrash)},
      {QStringLiteral("CRC"), ofBytes([](QByteArrayView bytes) { return Value(qint64(CRC(bytes))); })},
      {QStringLiteral("containsData"), dataIsIn},
      {QStringLiteral("hexadecimalStringRepresentation"),
       ofBytes([](QByteArrayView bytes) { return Value(hexadecimalStringRepresentation(bytes)); })},
      {QStringLiteral("hexadecimalStringRepresentationWithSpaces"),
       ofBytes([](QByteArrayView bytes) { return Value(hexadecimalStringRepresentationWithSpaces(bytes)); })},
      {QStringLiteral("plistDateValue"), dateOf},
      {QStringLiteral("formatCount"),
       [](RequestArguments &arguments) { return Value(formatCount(arguments.number())); }},
  };
  return table;
}

/// Installs the table that the request names. False if it is no table of texts.
bool installSimplifiers(const Dictionary &request, QString *error) {
  const Value &table = request.value(keys::simplifiers), &plurals = request.value(kIgnorePlurals);
  for (const DictionaryEntry &entry : table.toDictionary()) {
    if (!entry.value.isText()) *error = QStringLiteral("\"simplifiers\" holds more than texts");
  }
  if (!table.isNull() && table.type() != Value::Type::Dictionary)
    *error = QStringLiteral("\"simplifiers\" is no object");
  if (!plurals.isNull() && plurals.type() != Value::Type::Boolean)
    *error = QStringLiteral("\"ignorePlurals\" is not true or false");
  if (!error->isEmpty()) return false;
  if (table.isNull() && plurals.isNull()) {
    clearSimplifiers();
  } else {
    setSimplifiersDictionaryRemoveTrailingS(table.toDictionary(), plurals.toBool());
  }
  return true;
}

}  // namespace

Value answerTextRequest(const Dictionary &request, QString *error) {
  const QString &name = request.value(kOp).toText();
  const auto operation = operations().constFind(name);
  if (operation == operations().constEnd()) {
    *error = QStringLiteral("unknown operation \"%1\"").arg(name);
    return {};
  }
  const Value &given = request.value(kArgs);
  if (!given.isNull() && given.type() != Value::Type::Array) {
    *error = QStringLiteral("\"args\" is no array");
    return {};
  }
  if (!installSimplifiers(request, error)) return {};
  RequestArguments arguments(given.toArray());
  const Value result = (*operation)(arguments);
  *error = arguments.error();
  return error->isEmpty() ? result : Value();
}
