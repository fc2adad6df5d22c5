#pragma once

#include <QSet>

#include "keeper/script/ScriptTree.h"

class ScriptDictionary;
struct ScriptParsing;

/// Parses what stands at the top of a script or script object: properties, handlers, script objects. Throws
/// ScriptError. One thread.
class DeclarationParser {
 public:
  explicit DeclarationParser(ScriptParsing &parsing) : all(parsing) {}

  /// A script's declarations and statements, up to its `end` or the end of the text.
  scriptTree::Script script(bool wholeText);
  /// `script S … end script`.
  scriptTree::DefineScript definition();
  /// The application named behind `using terms from`, whose dictionary then holds.
  const ScriptDictionary *termsSource();

 private:
  void declarations(scriptTree::Script &script, bool wholeText);
  bool declaration(scriptTree::Script &script);
  void property(scriptTree::Script &script);
  void handler(scriptTree::Script &script);
  void runParameters(scriptTree::Handler &handler);
  void parameters(scriptTree::Handler &handler, char16_t opening, char16_t closing);
  void addParameter(scriptTree::Handler &handler, QSet<QString> &names);
  void endOfHandler(const scriptTree::Handler &handler);
  [[noreturn]] void failTwice(const QString &handler, qsizetype start);

  ScriptParsing &all;
  /// Names of the script that is being read.
  QSet<QString> propertyNames;
  QSet<QString> handlerNames;
};
