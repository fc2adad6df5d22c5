#pragma once

#include <QString>
#include <QStringList>

/// How texts are compared, split and joined at the moment: `considering`, `ignoring` and the text item
/// delimiters.
struct ScriptTextRules {
  bool ignoringCase = true;
  bool ignoringDiacriticals = false;
  bool ignoringWhiteSpace = false;
  bool ignoringHyphens = false;
  bool ignoringPunctuation = false;
  /// Never empty; the first one joins.
  QStringList delimiters = {QString()};

  /// The text without the differences that are ignored: two texts are equal if their keys are.
  QString key(const QString &text) const;
  bool areEqual(const QString &a, const QString &b) const;
  /// Below, equal to or above 0 as `a` stands before, with or behind `b`. Where case counts it decides
  /// between texts that are equal without it.
  int compare(const QString &a, const QString &b) const;

  /// Sets the rule of an attribute's name ("case", "white space" ...); without effect for other names.
  void setIgnoring(const QString &attribute, bool ignored);

 private:
  bool onlyCase() const;
};
