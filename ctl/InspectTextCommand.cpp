#include "ctl/InspectTextCommand.h"

#include "ctl/JsonReader.h"
#include "ctl/JsonWriter.h"
#include "ctl/Options.h"
#include "ctl/TextOperations.h"

namespace {

const Key kId(u"id");

/// Answers one line of input with one line of output.
void answer(const std::string &line, std::ostream &out) {
  QString error;
  Value result;
  const std::optional<Value> request =
      JsonReader(QByteArrayView(line.data(), qsizetype(line.size()))).read(&error);
  if (request && request->type() != Value::Type::Dictionary) error = QStringLiteral("a request is an object");
  if (request && error.isEmpty()) result = answerTextRequest(request->toDictionary(), &error);
  JsonWriter json(out);
  json.beginObject();
  json.member(u"id", request ? request->toDictionary().value(kId) : Value());
  if (error.isEmpty()) {
    json.member(u"result", result);
  } else {
    json.member(u"error", error);
  }
  json.endObject();
  json.endLine();
}

}  // namespace

int InspectTextCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({}, {});
  QString error;
  if (!options.parse(arguments, 0, &error)) return wrongUse(error, terminal);
  std::string line;
  while (terminal.out.good() && std::getline(terminal.in, line)) {
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    answer(line, terminal.out);
    terminal.out.flush();
  }
  return exitCode::kDone;
}
