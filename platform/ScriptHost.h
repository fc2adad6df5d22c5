#pragma once

#include <QString>
#include <optional>
#include <vector>

/// What a script gave back.
struct ScriptDescriptor {
  enum class Type { None, Text, Integer, Real, Boolean, List };

  Type type = Type::None;
  QString text;
  qint64 integer = 0;
  double real = 0.0;
  bool boolean = false;
  std::vector<ScriptDescriptor> list;

  static ScriptDescriptor ofText(const QString &text);
  static ScriptDescriptor ofInteger(qint64 integer);
  static ScriptDescriptor ofReal(double real);
  static ScriptDescriptor ofBoolean(bool boolean);

  /// A text, or a number or boolean as text (reals in the shortest form that reads back); nothing for lists
  /// and for no result.
  std::optional<QString> stringValue() const;
  /// A number, reals rounded, saturating; a boolean as 1 or 0; a text by the number that it spells; else 0.
  qint32 int32Value() const;
};

/// Why a script failed; any of it may be absent.
struct ScriptFailure {
  std::optional<qint64> number;
  QString message;
  /// The offending stretch of the source, in UTF-16 code units; of length 0 where none is named.
  qsizetype rangeStart = 0;
  qsizetype rangeLength = 0;
};

/// How a run ended: with a result, with a failure, or with neither where no script could be made of the text.
struct ScriptOutcome {
  std::optional<ScriptDescriptor> result;
  std::optional<ScriptFailure> failure;
};

/// Runs script texts in the music application.
class ScriptHost {
 public:
  virtual ~ScriptHost() = default;
  /// Compiles and runs a script text and waits for its end, however long that takes. A text that speaks to an
  /// application that is not running launches it first. Any thread, several at once. Never throws.
  virtual ScriptOutcome run(const QString &source) = 0;
  /// While broken off, the runs that wait for the application fail at once, and so do those that come; what
  /// the application makes of a script that it has is its own affair. For the end of a program whose
  /// application hangs. A host that cannot do it goes on as before. Any thread.
  virtual void setBrokenOff(bool) {}
};
