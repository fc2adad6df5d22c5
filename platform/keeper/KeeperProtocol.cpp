#include "platform/keeper/KeeperProtocol.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtEndian>
#include <utility>

namespace keeperProtocol {

namespace {

std::optional<QJsonObject> objectOf(const QByteArray &text) {
  const QJsonDocument document = QJsonDocument::fromJson(text);
  if (!document.isObject()) return std::nullopt;
  return document.object();
}

QByteArray textOf(const QJsonObject &object) {
  return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<std::vector<std::pair<QString, QString>>> mappingOf(const QJsonValue &value) {
  std::vector<std::pair<QString, QString>> mapping;
  const QJsonArray pairs = value.toArray();
  for (const QJsonValue &entry : pairs) {
    const QJsonArray pair = entry.toArray();
    if (pair.size() != 2 || !pair[0].isString() || !pair[1].isString()) return std::nullopt;
    mapping.emplace_back(pair[0].toString(), pair[1].toString());
  }
  return mapping;
}

}  // namespace

std::optional<std::pair<QString, QString>> mappingOfText(const QString &text) {
  if (!text.contains(u'=')) return std::nullopt;
  return std::pair(text.section(u'=', 0, 0), text.section(u'=', 1));
}

QByteArray framed(const QByteArray &text) {
  QByteArray message(4, Qt::Uninitialized);
  qToBigEndian(quint32(text.size()), message.data());
  return message + text;
}

quint32 lengthOf(const char *fourBytes) {
  return qFromBigEndian<quint32>(fourBytes);
}

QByteArray encodeRequest(const Request &request) {
  QJsonObject object;
  if (const auto *script = std::get_if<ScriptRequest>(&request)) {
    object[QStringLiteral("script")] = script->source;
  } else if (const auto *import = std::get_if<ImportRequest>(&request)) {
    QJsonArray mapping;
    for (const auto &[from, to] : import->mapping) mapping.append(QJsonArray{from, to});
    object[QStringLiteral("import")] = import->file;
    object[QStringLiteral("map")] = mapping;
  } else if (const auto *to = std::get_if<ExportRequest>(&request)) {
    object[QStringLiteral("export")] = to->file;
  } else {
    object[QStringLiteral("status")] = true;
  }
  return textOf(object);
}

std::optional<Request> decodeRequest(const QByteArray &text, QString *error) {
  QJsonParseError fault;
  const QJsonDocument document = QJsonDocument::fromJson(text, &fault);
  if (error) {
    *error = fault.error != QJsonParseError::NoError
                 ? QStringLiteral("no JSON: %1 at byte %2").arg(fault.errorString()).arg(fault.offset)
                 : QStringLiteral("no request that is known");
  }
  const QJsonValue script = document[u"script"], import = document[u"import"], to = document[u"export"];
  if (script.isString()) return ScriptRequest{script.toString()};
  if (document[u"status"].isBool()) return StatusRequest{};
  if (to.isString()) return ExportRequest{to.toString()};
  if (!import.isString()) return std::nullopt;
  const auto mapping = mappingOf(document[u"map"]);
  if (!mapping) return std::nullopt;
  return ImportRequest{import.toString(), *mapping};
}

QByteArray encodeStatus(const Status &status) {
  QJsonValue importing;
  if (status.importing) {
    importing = QJsonObject{{QStringLiteral("done"), status.importing->done},
                            {QStringLiteral("total"), status.importing->total},
                            {QStringLiteral("file"), status.importing->file}};
  }
  const QJsonObject facts{{QStringLiteral("version"), status.version},
                          {QStringLiteral("folder"), status.folder},
                          {QStringLiteral("pid"), status.processID},
                          {QStringLiteral("tracks"), status.tracks},
                          {QStringLiteral("importing"), importing},
                          {QStringLiteral("playing"), status.playing},
                          {QStringLiteral("importProblem"), status.importProblem}};
  return textOf({{QStringLiteral("status"), facts}});
}

std::optional<Status> decodeStatus(const QByteArray &text) {
  const auto answer = objectOf(text);
  if (!answer || !(*answer)[u"status"].isObject()) return std::nullopt;
  const QJsonObject facts = (*answer)[u"status"].toObject();
  Status status;
  status.version = facts[u"version"].toString();
  status.folder = facts[u"folder"].toString();
  status.processID = facts[u"pid"].toInteger();
  status.tracks = facts[u"tracks"].toInteger();
  status.playing = facts[u"playing"].toBool();
  status.importProblem = facts[u"importProblem"].toString();
  const QJsonObject importing = facts[u"importing"].toObject();
  if (!importing.isEmpty()) {
    status.importing = Importing{importing[u"done"].toInteger(), importing[u"total"].toInteger(),
                                 importing[u"file"].toString()};
  }
  return status;
}

ScriptOutcome failed(qint64 number, const QString &message) {
  return {std::nullopt, ScriptFailure{number, message, 0, 0}};
}

}  // namespace keeperProtocol
