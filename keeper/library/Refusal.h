#pragma once

#include <QString>
#include <utility>

#include "keeper/library/StoreError.h"
#include "keeper/script/ScriptError.h"
#include "keeper/script/ScriptValue.h"

/// The errors that the application's things throw.
namespace refusal {

/// -1728
ScriptError cannotGet(const QString &what);
/// -10003
ScriptError readOnly(const QString &term);
/// -10006
ScriptError unfit(const QString &term, const QString &why = {});
/// -1708
ScriptError notUnderstood(const QString &verb);
/// -43
ScriptError fileNotFound(const QString &path);
ScriptError error(qint64 number, const QString &message);

}  // namespace refusal

/// What the function answers; what the store throws becomes an error of the script, -10000.
template <class Function>
auto withStoreErrors(Function function) {
  try {
    return function();
  } catch (const StoreError &problem) {
    throw refusal::error(scriptErrors::kHandlerFailed, problem.message);
  }
}

/// What a value is worth as a property's: numbers become texts, texts that spell a number become numbers, as
/// the language does it. Nothing if it cannot be.
std::optional<QString> textOfValue(const ScriptValue &value);
/// Real numbers are rounded.
std::optional<qint64> wholeOfValue(const ScriptValue &value);
std::optional<double> realOfValue(const ScriptValue &value);
std::optional<bool> flagOfValue(const ScriptValue &value);
/// The path of a file, or a text that is an absolute path.
std::optional<QString> pathOfValue(const ScriptValue &value);
