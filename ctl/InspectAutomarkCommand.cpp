#include "ctl/InspectAutomarkCommand.h"

#include <QFile>
#include <iterator>

#include "ctl/JsonReader.h"
#include "ctl/JsonWriter.h"
#include "ctl/Options.h"
#include "platform/Platform.h"
#include "repairs/MarkChooser.h"
#include "text/PlistDate.h"
#include "values/Keys.h"

namespace {

const Key kRows(u"rows"), kPrefs(u"prefs");

std::optional<QByteArray> inputOf(const QStringList &operands, Terminal &terminal, QString *error) {
  if (operands.isEmpty() || operands.first() == QStringLiteral("-")) {
    const std::string bytes(std::istreambuf_iterator<char>(terminal.in), {});
    return QByteArray(bytes.data(), qsizetype(bytes.size()));
  }
  QFile file(operands.first());
  if (file.open(QIODevice::ReadOnly)) return file.readAll();
  *error = QStringLiteral("%1: %2").arg(printable(file.fileName()), file.errorString());
  return std::nullopt;
}

/// What stands under a key that may be absent and is an object otherwise.
Dictionary objectUnder(Key key, const Dictionary &request, QString *error) {
  const Value &value = request.value(key);
  if (!value.isNull() && value.type() != Value::Type::Dictionary)
    *error = QStringLiteral("\"%1\" is no object").arg(key.text());
  return value.toDictionary();
}

/// JSON knows no dates: the row gets the one that it means.
void readDateAdded(const Dictionary &row) {
  const Value given = row.value(keys::DateAdded);
  if (given.isNumber()) row.set(keys::DateAdded, Date{given.toDouble()});
  const std::optional<Date> date = given.isText() ? plistDateValue(given.toText()) : std::nullopt;
  if (date) row.set(keys::DateAdded, *date);
}

std::vector<Dictionary> rowsOf(const Dictionary &request, QString *error) {
  std::vector<Dictionary> rows;
  const Value &list = request.value(kRows);
  if (list.type() != Value::Type::Array) *error = QStringLiteral("\"rows\" is no array");
  for (const Value &row : list.toArray()) {
    if (row.type() != Value::Type::Dictionary) {
      *error = QStringLiteral("row %1 is no object").arg(rows.size());
      break;
    }
    rows.push_back(row.toDictionary());
    readDateAdded(rows.back());
  }
  return rows;
}

/// One past the last row of the group that begins at a row.
size_t endOfGroup(const std::vector<Dictionary> &rows, size_t begin) {
  const qint64 number = rows[begin].value(keys::DupeGroup).toInteger();
  size_t end = begin + 1;
  while (end < rows.size() && rows[end].value(keys::DupeGroup).toInteger() == number) ++end;
  return end;
}

void answer(const std::vector<Dictionary> &rows, const AutomarkRules &rules, const FileKinds &kinds,
            Terminal &terminal) {
  const FileSizeOf sizeOnDisk = [](const QString &path) { return platform().fileFacts->fileSize(path); };
  JsonWriter json(terminal.out);
  json.beginArray();
  for (size_t begin = 0; begin < rows.size();) {
    const size_t end = endOfGroup(rows, begin);
    const GroupMarks marks =
        chooseMarks(std::span(rows).subspan(begin, end - begin), rules, kinds, sizeOnDisk);
    json.beginArray();
    json.value(qint64(begin) + marks.infoRow);
    json.value(qint64(begin) + marks.audioRow);
    json.endArray();
    begin = end;
  }
  json.endArray();
  json.endLine();
}

}  // namespace

int InspectAutomarkCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({}, {});
  QString error;
  if (!options.parse(arguments, 1, &error)) return wrongUse(error, terminal);
  const std::optional<QByteArray> input = inputOf(options.operands(), terminal, &error);
  const std::optional<Value> request = input ? JsonReader(*input).read(&error) : std::nullopt;
  if (request && request->type() != Value::Type::Dictionary)
    error = QStringLiteral("the request is no object");
  if (request && error.isEmpty()) {
    const Dictionary &given = request->toDictionary();
    const std::vector<Dictionary> rows = rowsOf(given, &error);
    const AutomarkRules rules = AutomarkRules::fromSettings(objectUnder(kPrefs, given, &error));
    const FileKinds kinds(objectUnder(keys::kinds, given, &error));
    if (error.isEmpty()) answer(rows, rules, kinds, terminal);
  }
  if (error.isEmpty()) return exitCode::kDone;
  return reported(error, terminal);
}
