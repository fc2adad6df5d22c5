#pragma once

#include "keeper/script/Interpreter.h"
#include "tests/fixtures/TestPlatform.h"
#include "tests/keeper/script/ToyLibrary.h"

/// A script, and what it must come to: a value as a script would write it, "none", or an error's number and
/// the stretch of the source that it names: "-1700 [x as integer]".
struct EvalCase {
  QString source;
  QString expected;
};

/// Runs scripts against a fresh toy library each.
class EvalHarness : public TestPlatform {
 protected:
  static QString shown(const ScriptDescriptor &value) {
    if (value.type == ScriptDescriptor::Type::Text) return u'"' + value.text + u'"';
    if (value.type != ScriptDescriptor::Type::List)
      return value.stringValue().value_or(QStringLiteral("none"));
    QStringList items;
    for (const ScriptDescriptor &item : value.list) items.append(shown(item));
    return u'{' + items.join(QStringLiteral(", ")) + u'}';
  }

  static QString shown(const ScriptOutcome &outcome, const QString &source) {
    if (outcome.result) return shown(*outcome.result);
    const ScriptFailure &failure = *outcome.failure;
    const QString stretch = source.mid(failure.rangeStart, failure.rangeLength);
    return QStringLiteral("%1 [%2]").arg(failure.number.value_or(0)).arg(stretch);
  }

  static QString run(const QString &source) {
    ToyLibrary library;
    Interpreter interpreter(library);
    return shown(interpreter.run(source), source);
  }

  /// Lines of the source are parted by " // ".
  static void check(const std::vector<EvalCase> &cases) {
    for (const EvalCase &one : cases) {
      QString source = one.source;
      source.replace(QStringLiteral(" // "), QStringLiteral("\n"));
      EXPECT_EQ(run(source).toStdString(), one.expected.toStdString()) << source.toStdString();
    }
  }

  /// The same, each inside a block that tells the toy library.
  static void checkTold(const std::vector<EvalCase> &cases) {
    std::vector<EvalCase> told;
    for (const EvalCase &one : cases) {
      told.push_back(
          {QStringLiteral("tell application \"Toy Music\" // %1 // end tell").arg(one.source), one.expected});
    }
    check(told);
  }
};
