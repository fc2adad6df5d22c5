#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

#include "values/Value.h"

/// The arguments of one request, taken one after the other. The first of a wrong type, too few and too many
/// are noted as the error; what is taken then is empty.
class RequestArguments {
 public:
  explicit RequestArguments(const Array &given) : arguments(given) {}

  /// A text; nothing for null.
  std::optional<QString> text();
  /// A list of texts.
  QStringList texts();
  /// A text of exactly one 16-bit unit.
  QChar character();
  /// Bytes in hexadecimal, blanks between them ignored; nothing for null.
  std::optional<QByteArray> bytes();
  double number();
  bool boolean();

  bool hasFailed() const { return !problem.isEmpty(); }
  /// What is wrong with the arguments, those left over included; empty if nothing is.
  QString error() const;

 private:
  const Value &next(bool *exists);
  void fail(const char *expected);

  const Array arguments;
  qsizetype taken = 0;
  QString problem;
};
