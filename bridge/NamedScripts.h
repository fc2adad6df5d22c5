#pragma once

#include <QString>
#include <QStringList>
#include <initializer_list>
#include <optional>

#include "platform/ScriptHost.h"
#include "support/Format.h"

/// The two stores of script texts: the table of named scripts, packed in the resource "res_pack.db", and the
/// compiled library "Internal_Functions_<application>.scpt". Any thread.
namespace iTunesInterface {

/// The text of a named script; nothing if the table has none. A table that could not be read is tried again
/// at the next call.
std::optional<QString> scriptNamed(const QString &name);

/// The result of a named script, its place holders filled with the arguments as they stand, run untimed;
/// nothing if there is no such script or no result.
std::optional<QString> stringFromScriptNameAndArguments(const QString &name,
                                                        std::initializer_list<FormatArgument> arguments);

template <class... A>
std::optional<QString> stringFromScriptNameAndFormat(const QString &name, const A &...arguments) {
  return stringFromScriptNameAndArguments(name, {FormatArgument(arguments)...});
}

/// The result of a handler of the compiled library, run untimed. A handler that fails gives "error: " and the
/// reason; nothing comes back if the handler gave nothing or could not be called. No parameters are one empty
/// one; a parameter must not end in a backslash.
std::optional<QString> stringFromCompiledFunctionParams(const QString &handler,
                                                        const QStringList &parameters);
/// The same with the whole result: a handler that gave nothing is told from one that could not be called.
std::optional<ScriptDescriptor> descFromCompiledFunctionParams(const QString &handler,
                                                               const QStringList &parameters);

}  // namespace iTunesInterface
