#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <concepts>
#include <initializer_list>
#include <variant>

#include "values/Value.h"

/// The text of a value as a log line shows it: texts and numbers as they are, dates in UTC, bytes in
/// hexadecimal, containers in one line of braces. "(null)" for nothing. Cut with "…" beyond 100,000
/// characters; does not recurse.
QString description(const Value &value);

/// One argument of a format, with its type, so that a wrong letter can misprint but never misread memory.
class FormatArgument {
 public:
  template <std::signed_integral T>
  FormatArgument(T number) : held(qint64(number)), bytes(sizeof(T)) {}
  template <std::unsigned_integral T>
  FormatArgument(T number) : held(quint64(number)), bytes(sizeof(T)) {}
  FormatArgument(double number) : held(number) {}
  FormatArgument(const void *pointer) : held(pointer) {}
  /// A null text prints as "(null)".
  FormatArgument(const QString &text) : held(text) {}
  FormatArgument(QStringView text) : held(text.toString()) {}
  FormatArgument(const char *utf8) : held(QString::fromUtf8(utf8)) {}
  /// Read as UTF-8.
  FormatArgument(const QByteArray &utf8) : held(QString::fromUtf8(utf8)) {}
  FormatArgument(const std::string &utf8) : held(QString::fromStdString(utf8)) {}
  FormatArgument(const QStringList &texts);
  FormatArgument(const Value &value);
  FormatArgument(const Date &date) : FormatArgument(Value(date)) {}
  FormatArgument(const Array &array) : FormatArgument(Value(array)) {}
  FormatArgument(const Dictionary &dictionary) : FormatArgument(Value(dictionary)) {}

 private:
  friend class FormatPrinter;
  std::variant<qint64, quint64, double, QString, const void *> held;
  int bytes = 8;
};

/// The format with its place holders filled, printf's way: %d %i %u %x %X %o %c %f %e %g %s %p and %@ for any
/// object, with flags, width, precision, length letters (which change nothing: an argument knows its size)
/// and places ("%2$@"). "%%" is a percent sign. A place holder without an argument stays as it is; surplus
/// arguments are ignored. Any thread.
QString formatText(const QString &format, std::initializer_list<FormatArgument> arguments);
