#include "text/AmpersandCodes.h"

#include <array>
#include <unordered_map>

#include "text/EntityTable.h"

namespace {

// The characters of the bytes 0x80 to 0x9F in Windows-1252; five bytes have none and stay.
constexpr std::array<char16_t, 32> kWindows = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

char16_t codeOfName(QStringView name) {
  static const auto codes = [] {
    std::unordered_map<std::u16string_view, char16_t> made(kEntityTable.size());
    for (const EntityRow &row : kEntityTable) made[row.name] = char16_t(row.code);
    return made;
  }();
  const auto found = codes.find(std::u16string_view(name.utf16(), size_t(name.size())));
  return found == codes.end() ? char16_t(0) : found->second;
}

/// The name of a code; where the table has two, the later one. Empty for a code without a name.
std::u16string_view nameOfCode(char16_t code) {
  static const auto names = [] {
    std::unordered_map<char32_t, std::u16string_view> made(kEntityTable.size());
    for (const EntityRow &row : kEntityTable) made[row.code] = row.name;
    return made;
  }();
  const auto found = names.find(code);
  return found == names.end() ? std::u16string_view() : found->second;
}

int digitOf(QChar digit) {
  const char16_t unit = digit.unicode();
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  const char16_t lower = unit | 0x20;
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : 99;
}

bool isNameUnit(QChar unit) {
  const char16_t lower = unit.unicode() | 0x20;
  return (lower >= u'a' && lower <= u'z') || (unit >= u'0' && unit <= u'9');
}

/// A number's code; `end` is moved behind its digits.
char16_t numericCode(QStringView text, qsizetype *end, int base) {
  constexpr int kMostDigits = 8;
  quint32 value = 0;
  qsizetype at = *end;
  for (int digits = 0; digits < kMostDigits && at < text.size() && digitOf(text[at]) < base; ++digits) {
    value = value * quint32(base) + quint32(digitOf(text[at++]));
    if (value >= 0x10000) return 0;
  }
  *end = at;
  return value >= 0x80 && value <= 0x9F ? kWindows[value - 0x80] : char16_t(value);
}

}  // namespace

AmpersandCode ampersandCodeEquivalentAtIndexCodeLength(QStringView text, qsizetype index) {
  if (index < 0 || index >= text.size() - 1 || text[index] != u'&') return {};
  AmpersandCode result;
  qsizetype end = index + 1;
  if (text[end] == u'#' && end + 1 < text.size()) {
    const bool hexadecimal = (text[end + 1].unicode() | 0x20) == u'x';
    end += hexadecimal ? 2 : 1;
    result.code = numericCode(text, &end, hexadecimal ? 16 : 10);
  } else {
    while (end < text.size() && isNameUnit(text[end])) ++end;
    result.code = codeOfName(text.mid(index + 1, end - index - 1));
  }
  if (result.code == 0) return {};
  if (end < text.size() && text[end] == u';') ++end;
  result.length = qint32(end - index);
  return result;
}

QString stringByReplacingAmpersandCodes(const QString &text) {
  qsizetype at = text.indexOf(u'&');
  if (at < 0) return text;
  QString result;
  result.reserve(text.size());
  qsizetype copied = 0;
  while (at >= 0) {
    const AmpersandCode entity = ampersandCodeEquivalentAtIndexCodeLength(text, at);
    if (entity.code != 0) {
      result.append(QStringView(text).mid(copied, at - copied)).append(QChar(entity.code));
      copied = at + entity.length;
    }
    at = text.indexOf(u'&', entity.code != 0 ? copied : at + 1);
  }
  return result.append(QStringView(text).mid(copied));
}

QString stringByInsertingAmpersandCodes(const QString &text) {
  constexpr char16_t kLastPlain = 126;
  QString result;
  result.reserve(text.size());
  for (const QChar unit : text) {
    const char16_t code = unit.unicode();
    if (code <= kLastPlain) {
      result += unit;
    } else if (const QStringView name(nameOfCode(code)); !name.isEmpty()) {
      result.append(u'&').append(name).append(u';');
    } else {
      result.append(u'&').append(QString::number(code)).append(u';');
    }
  }
  return result;
}
