#pragma once

#include <QHash>
#include <QStringList>

/// The options and operands of one command. Options stand anywhere before a "--"; their values follow as the
/// next argument or behind "=".
class Options {
 public:
  /// The option by which every command is asked for JSON.
  static QString json() { return QStringLiteral("--json"); }

  /// The options that the command knows, with their dashes: those without a value, those with one.
  Options(QStringList flagNames, QStringList valueNames)
      : flags(std::move(flagNames)), valued(std::move(valueNames)) {}

  /// Takes the arguments apart. False with what is wrong in `error`: an unknown option, a value too few or
  /// too many, or more operands than `maximumOperands`.
  [[nodiscard]] bool parse(const QStringList &arguments, qsizetype maximumOperands, QString *error);

  /// True if the option was given, with a value or without.
  bool has(const QString &name) const { return given.contains(name); }
  bool wantsJson() const { return has(json()); }
  /// The last value of an option; null if it was not given.
  QString value(const QString &name) const {
    return values(name).isEmpty() ? QString() : values(name).last();
  }
  /// All values of an option, in the order of the command line; none if it was not given.
  QStringList values(const QString &name) const { return given.value(name); }
  /// What is no option and no option's value, in the order of the command line.
  const QStringList &operands() const { return plain; }
  /// Every option that was given, with its value, in the order of the command line.
  const QList<std::pair<QString, QString>> &sequence() const { return inOrder; }

 private:
  void take(const QString &name, const QString &value);

  const QStringList flags;
  const QStringList valued;
  QHash<QString, QStringList> given;
  QList<std::pair<QString, QString>> inOrder;
  QStringList plain;
};
