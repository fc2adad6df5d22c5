#include "ctl/InspectPlistCommand.h"

#include "app/library/MappedFile.h"
#include "app/library/PropertyListReader.h"
#include "ctl/JsonWriter.h"
#include "ctl/Options.h"
#include "ctl/Session.h"
#include "support/Preferences.h"

namespace {

/// A file as it was read.
struct Reading {
  Value root;
  QString error;
  PropertyListCounts counts;
  QString parser;
};

Reading readList(QByteArrayView bytes, bool manualFirst) {
  Reading reading;
  reading.root = BMUtility::mutablePropertyListFromDataTrySystemFirstErrorDescription(
      bytes, !manualFirst, &reading.error, &reading.counts);
  reading.parser = QString::fromLatin1(reading.counts.isManual ? "manual" : "system");
  return reading;
}

void writeJson(const Reading &reading, Terminal &terminal) {
  JsonWriter json(terminal.out);
  json.beginObject();
  json.member(u"root", reading.root);
  json.key(u"error");
  json.textOrNull(reading.error);
  json.member(u"values", reading.counts.values);
  json.member(u"undecodable", reading.counts.undecodable);
  json.member(u"parser", reading.parser);
  json.endObject();
  json.endLine();
}

QString rootInWords(const Value &root) {
  switch (root.type()) {
    case Value::Type::Null:
      return QStringLiteral("nothing");
    case Value::Type::Array:
      return QStringLiteral("an array of %1").arg(root.toArray().size());
    case Value::Type::Dictionary:
      return QStringLiteral("a dictionary of %1").arg(root.toDictionary().size());
    default:
      return QStringLiteral("a single value");
  }
}

void writeLines(const Reading &reading, Terminal &terminal) {
  terminal.print(QStringLiteral("Root:        ") + rootInWords(reading.root));
  terminal.print(QStringLiteral("Parser:      ") + reading.parser);
  terminal.print(QStringLiteral("Values:      %1").arg(reading.counts.values));
  terminal.print(QStringLiteral("Undecodable: %1").arg(reading.counts.undecodable));
}

}  // namespace

int InspectPlistCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({Options::json(), QStringLiteral("--manual")}, {});
  QString error;
  if (!options.parse(arguments, 1, &error)) return wrongUse(error, terminal);
  if (options.operands().isEmpty()) return wrongUse(QStringLiteral("name a FILE"), terminal);
  const Session session(Session::LogAtEnd::StaysText);
  MappedFile file;
  if (!file.open(options.operands().first(), &error)) {
    return reported(printable(error), terminal);
  }
  const bool manualFirst =
      options.has(QStringLiteral("--manual")) || prefs::isTrue(prefs::noSystemDeserialize);
  const Reading reading = readList(file.bytes(), manualFirst);
  options.wantsJson() ? writeJson(reading, terminal) : writeLines(reading, terminal);
  if (!reading.error.isEmpty()) terminal.say(printable(reading.error));
  if (reading.root.isNull() && reading.error.isEmpty())
    terminal.say(QStringLiteral("the file holds no property list"));
  return reading.root.isNull() || !reading.error.isEmpty() ? exitCode::kReported : exitCode::kDone;
}
