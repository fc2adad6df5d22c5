#include "keeper/script/ScriptLibraries.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include "platform/Platform.h"

namespace {

constexpr qint64 kLargestFile = 16 * 1024 * 1024;
/// Beyond so many files all are forgotten: nobody has as many libraries.
constexpr qsizetype kMostFiles = 64;

QString readText(const QString &path) {
  const ScriptError noScript{
      scriptErrors::kNotACompiledScript, QStringLiteral("The file %1 is no script.").arg(path), {}};
  QFile file(path);
  // A device may have no end.
  if (!QFileInfo(path).isFile() || !file.open(QFile::ReadOnly)) {
    throw ScriptError{scriptErrors::kFileNotFound, QStringLiteral("File %1 wasn't found.").arg(path), {}};
  }
  if (file.size() > kLargestFile) throw noScript;
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString text = decoder.decode(file.readAll());
  if (decoder.hasError()) throw noScript;
  return text;
}

}  // namespace

ParsedScriptPtr ScriptLibraries::load(const QString &path) {
  const std::optional<Date> changed = platform().fileFacts->modificationDate(path);
  const qint64 size = platform().fileFacts->fileSize(path).value_or(-1);
  const auto found = known.constFind(path);
  if (found != known.cend() && found->changed == changed && found->size == size) return found->parsed;
  const QString text = readText(path);
  ParsedScriptPtr parsed;
  try {
    parsed = ScriptParser::parse(text, dictionaries);
  } catch (ScriptError &error) {
    error.range = {};
    throw;
  }
  if (known.size() >= kMostFiles) known.clear();
  known.insert(path, {changed, size, parsed});
  return parsed;
}
