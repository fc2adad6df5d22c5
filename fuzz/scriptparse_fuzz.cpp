// Script texts: any text gives a tree or one of the language's errors with a range inside the text, and the
// same each time.
#include <cstdint>

#include "fuzz/Require.h"
#include "keeper/script/ScriptParser.h"

namespace {

const ScriptDictionary *words(const QString &name) {
  static const ScriptDictionary known = [] {
    ScriptDictionary made;
    made.addClass({QStringLiteral("track"), QStringLiteral("tracks"), {}});
    made.addClass({QStringLiteral("user playlist"), QStringLiteral("user playlists"), {}});
    made.addClass({QStringLiteral("artwork"), QStringLiteral("artworks"), {}});
    for (const char *term : {"name", "artwork", "persistent id", "album", "album artist", "smart"}) {
      made.addProperty(QString::fromLatin1(term));
    }
    made.addConstant(QStringLiteral("none"));
    made.addVerb({QStringLiteral("duplicate"), {QStringLiteral("to")}});
    made.addVerb({QStringLiteral("play"), {QStringLiteral("once")}});
    made.addVerb({QStringLiteral("make"),
                  {QStringLiteral("new"), QStringLiteral("at"), QStringLiteral("with properties")}});
    return made;
  }();
  return name == u"Music" ? &known : nullptr;
}

/// The error's number, and 0 for a text that parses.
qint64 outcome(const QString &source) {
  try {
    const ParsedScriptPtr parsed = ScriptParser::parse(source, words);
    require(parsed && parsed->source == source);
    return 0;
  } catch (const ScriptError &error) {
    require(error.number < 0 && !error.message.isEmpty());
    require(error.range.start >= 0 && error.range.length >= 0);
    require(error.range.start + error.range.length <= source.size());
    return error.number;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const QString source = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
  const qint64 first = outcome(source);
  require(outcome(source) == first);
  return 0;
}
