#pragma once

#include <QString>

/// A stretch of a script's source, in UTF-16 code units.
struct SourceRange {
  qsizetype start = 0;
  qsizetype length = 0;
};

/// The language's own error numbers, and the application's.
namespace scriptErrors {
constexpr qint64 kFileNotFound = -43;
constexpr qint64 kBadParameter = -50;
constexpr qint64 kNotWritable = -54;
constexpr qint64 kUserCancelled = -128;
constexpr qint64 kApplicationNotRunning = -600;
constexpr qint64 kConnectionInvalid = -609;
constexpr qint64 kApplicationNotFound = -10814;
constexpr qint64 kCannotMake = -1700;
constexpr qint64 kParameterMissing = -1701;
constexpr qint64 kNotUnderstood = -1708;
constexpr qint64 kTimedOut = -1712;
constexpr qint64 kInvalidIndex = -1719;
constexpr qint64 kCannotGet = -1728;
constexpr qint64 kNotACompiledScript = -1752;
constexpr qint64 kHandlerFailed = -10000;
constexpr qint64 kAccessNotAllowed = -10003;
constexpr qint64 kCannotSet = -10006;
constexpr qint64 kWrongClass = -10010;
constexpr qint64 kRaised = -2700;
constexpr qint64 kDivisionByZero = -2701;
constexpr qint64 kNumberTooLarge = -2702;
constexpr qint64 kStackOverflow = -2706;
constexpr qint64 kTooManySteps = -2707;
constexpr qint64 kTooLarge = -2708;
constexpr qint64 kConsiderAndIgnore = -2720;
constexpr qint64 kCannotGoAfter = -2740;
constexpr qint64 kExpected = -2741;
constexpr qint64 kParameterTwice = -2750;
constexpr qint64 kPropertyTwice = -2751;
constexpr qint64 kHandlerTwice = -2752;
constexpr qint64 kNotDefined = -2753;
constexpr qint64 kLocalAndGlobal = -2754;
constexpr qint64 kExitOutsideRepeat = -2755;
constexpr qint64 kNoResult = -2763;
}  // namespace scriptErrors

/// What stops a script: thrown inside the interpreter and by the objects that it speaks to, and caught at its
/// rim.
struct ScriptError {
  qint64 number = scriptErrors::kRaised;
  QString message;
  /// Where in the source; of length 0 until somebody knows.
  SourceRange range;
};
