#include "support/Format.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <vector>

FormatArgument::FormatArgument(const QStringList &texts)
    : held(texts.isEmpty() ? QStringLiteral("()") : u'(' + texts.join(u", ") + u')') {}

FormatArgument::FormatArgument(const Value &value) : held(description(value)) {}

namespace {

/// One place directive, taken apart.
struct Directive {
  int place = 0;  // from 1; 0 for the next argument
  QByteArray flags;
  int width = 0, precision = -1;
  char16_t letter = 0;
};

constexpr int kWidest = 1000;

/// The digits at `at`, which moves behind them; at most `kWidest`.
int readNumber(const QString &format, qsizetype &at) {
  int number = 0;
  while (at < format.size() && format[at] >= u'0' && format[at] <= u'9') {
    number = std::min(kWidest, number * 10 + (format[at].unicode() - u'0'));
    ++at;
  }
  return number;
}

void readFlags(const QString &format, qsizetype &at, Directive &directive) {
  while (at < format.size() && QStringView(u"-+ 0#").contains(format[at])) {
    directive.flags += char(format[at++].unicode());
  }
}

/// Reads from behind the percent sign; `at` ends behind the letter, which is 0 if the text ends first.
Directive readDirective(const QString &format, qsizetype &at) {
  Directive directive;
  readFlags(format, at, directive);
  directive.width = readNumber(format, at);
  if (at < format.size() && format[at] == u'$') {
    directive.place = std::exchange(directive.width, 0);
    readFlags(format, ++at, directive);
    directive.width = readNumber(format, at);
  }
  if (at < format.size() && format[at] == u'.') directive.precision = readNumber(format, ++at);
  while (at < format.size() && QStringView(u"hlqLzjt").contains(format[at])) ++at;
  if (at < format.size()) directive.letter = format[at++].unicode();
  return directive;
}

template <class T>
QString printed(const Directive &directive, const char *tail, T value) {
  QByteArray pattern = '%' + directive.flags;
  if (directive.width > 0) pattern += QByteArray::number(directive.width);
  if (directive.precision >= 0) pattern += '.' + QByteArray::number(directive.precision);
  pattern += tail;
  std::array<char, 256> room;
  const int length = std::snprintf(room.data(), room.size(), pattern.constData(), value);
  if (length < 0) return {};
  if (size_t(length) < room.size()) return QString::fromUtf8(room.data(), length);
  std::vector<char> larger(size_t(length) + 1);
  std::snprintf(larger.data(), larger.size(), pattern.constData(), value);
  return QString::fromUtf8(larger.data(), length);
}

qint64 truncated(double number) {
  if (std::isnan(number)) return 0;
  if (number >= 9.2233720368547758e18) return std::numeric_limits<qint64>::max();
  if (number <= -9.2233720368547758e18) return std::numeric_limits<qint64>::min();
  return qint64(number);
}

QString padded(const Directive &directive, QString text) {
  if (directive.precision >= 0) text.truncate(directive.precision);
  return directive.flags.contains('-') ? text.leftJustified(directive.width) : text.rightJustified(directive.width);
}

}  // namespace

/// Prints arguments; apart from the format so that only it sees what an argument holds.
class FormatPrinter {
 public:
  /// Null for a letter that is none.
  static QString print(const Directive &directive, const FormatArgument &argument) {
    switch (directive.letter) {
      case u'd':
      case u'i':
        return printed(directive, "lld", static_cast<long long>(signedNumber(argument)));
      case u'u':
        return printed(directive, "llu", static_cast<unsigned long long>(unsignedNumber(argument)));
      case u'x':
        return printed(directive, "llx", static_cast<unsigned long long>(unsignedNumber(argument)));
      case u'X':
        return printed(directive, "llX", static_cast<unsigned long long>(unsignedNumber(argument)));
      case u'o':
        return printed(directive, "llo", static_cast<unsigned long long>(unsignedNumber(argument)));
      case u'c':
        return padded(directive, QString(QChar(char16_t(unsignedNumber(argument)))));
      case u'e':
      case u'f':
      case u'F':
      case u'g':
      case u'G': {
        const char letter[] = {char(directive.letter), 0};
        return printed(directive, letter, realNumber(argument));
      }
      case u'p':
        return padded(directive, u"0x"_qs + QString::number(unsignedNumber(argument), 16));
      case u's':
      case u'@':
        return padded(directive, object(argument));
      default:
        return {};
    }
  }

 private:
  static qint64 signedNumber(const FormatArgument &argument) {
    if (const auto *text = std::get_if<QString>(&argument.held)) return Value(*text).toInteger();
    if (const auto *real = std::get_if<double>(&argument.held)) return truncated(*real);
    if (const auto *number = std::get_if<quint64>(&argument.held)) return qint64(*number);
    if (const auto *number = std::get_if<qint64>(&argument.held)) return *number;
    return qint64(reinterpret_cast<quintptr>(std::get<const void *>(argument.held)));
  }

  /// A negative number as the unsigned one of its own size.
  static quint64 unsignedNumber(const FormatArgument &argument) {
    const quint64 number = quint64(signedNumber(argument));
    return argument.bytes < 8 ? number & ((quint64(1) << (argument.bytes * 8)) - 1) : number;
  }

  static double realNumber(const FormatArgument &argument) {
    if (const auto *text = std::get_if<QString>(&argument.held)) return Value(*text).toDouble();
    if (const auto *real = std::get_if<double>(&argument.held)) return *real;
    if (const auto *number = std::get_if<quint64>(&argument.held)) return double(*number);
    return double(signedNumber(argument));
  }

  static QString object(const FormatArgument &argument) {
    if (const auto *text = std::get_if<QString>(&argument.held)) {
      return text->isNull() ? QStringLiteral("(null)") : *text;
    }
    if (const auto *real = std::get_if<double>(&argument.held)) return description(Value(*real));
    if (const auto *number = std::get_if<quint64>(&argument.held)) return QString::number(*number);
    if (const auto *number = std::get_if<qint64>(&argument.held)) return QString::number(*number);
    const quint64 pointer = unsignedNumber(argument);
    return pointer ? u"0x"_qs + QString::number(pointer, 16) : QStringLiteral("(null)");
  }
};

QString formatText(const QString &format, std::initializer_list<FormatArgument> arguments) {
  QString text(u""_qs);
  text.reserve(format.size() + 32);
  size_t next = 0;
  qsizetype at = 0;
  while (at < format.size()) {
    const qsizetype percent = format.indexOf(u'%', at);
    if (percent < 0) break;
    text += QStringView(format).mid(at, percent - at);
    at = percent + 1;
    const Directive directive = readDirective(format, at);
    if (directive.letter == u'%') {
      text += u'%';
      continue;
    }
    const size_t index = directive.place > 0 ? size_t(directive.place - 1) : next++;
    const QString printedText =
        index < arguments.size() ? FormatPrinter::print(directive, arguments.begin()[index]) : QString();
    if (printedText.isNull()) {
      text += QStringView(format).mid(percent, at - percent);
    } else {
      text += printedText;
    }
  }
  return text += QStringView(format).mid(at);
}
