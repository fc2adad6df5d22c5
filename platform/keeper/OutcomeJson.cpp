#include "platform/keeper/OutcomeJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

namespace keeperProtocol {

namespace {

using Type = ScriptDescriptor::Type;

constexpr std::pair<Type, QLatin1String> kTypes[] = {
    {Type::None, QLatin1String("none")},       {Type::Text, QLatin1String("text")},
    {Type::Integer, QLatin1String("integer")}, {Type::Real, QLatin1String("real")},
    {Type::Boolean, QLatin1String("boolean")}, {Type::List, QLatin1String("list")}};

QString nameOf(Type type) {
  for (const auto &[known, name] : kTypes) {
    if (known == type) return name;
  }
  return {};
}

std::optional<Type> typeOf(const QString &name) {
  for (const auto &[type, known] : kTypes) {
    if (name == known) return type;
  }
  return std::nullopt;
}

std::optional<QJsonObject> encoded(const ScriptDescriptor &descriptor, int depth) {
  QJsonObject object{{QStringLiteral("type"), nameOf(descriptor.type)}};
  QJsonValue value;
  switch (descriptor.type) {
    case Type::None:
      return object;
    case Type::Text:
      value = descriptor.text;
      break;
    case Type::Integer:
      value = descriptor.integer;
      break;
    case Type::Real:
      value = descriptor.real;
      break;
    case Type::Boolean:
      value = descriptor.boolean;
      break;
    case Type::List: {
      QJsonArray items;
      for (const ScriptDescriptor &item : descriptor.list) {
        const auto inner = depth > 0 ? encoded(item, depth - 1) : std::nullopt;
        if (!inner) return std::nullopt;
        items.append(*inner);
      }
      value = items;
    }
  }
  if (descriptor.type == Type::Real && !std::isfinite(descriptor.real)) return std::nullopt;
  object[QStringLiteral("value")] = value;
  return object;
}

std::optional<ScriptDescriptor> decodedList(const QJsonValue &value, int depth);

std::optional<ScriptDescriptor> decoded(const QJsonValue &source, int depth) {
  const QJsonValue value = source[u"value"];
  const std::optional<Type> type = typeOf(source[u"type"].toString());
  if (!type) return std::nullopt;
  switch (*type) {
    case Type::None:
      return ScriptDescriptor{};
    case Type::Text:
      if (value.isString()) return ScriptDescriptor::ofText(value.toString());
      break;
    case Type::Integer:
      // A number is whole where two fallbacks leave the same.
      if (value.toInteger(0) == value.toInteger(1)) return ScriptDescriptor::ofInteger(value.toInteger());
      break;
    case Type::Real:
      if (value.isDouble()) return ScriptDescriptor::ofReal(value.toDouble());
      break;
    case Type::Boolean:
      if (value.isBool()) return ScriptDescriptor::ofBoolean(value.toBool());
      break;
    case Type::List:
      return decodedList(value, depth);
  }
  return std::nullopt;
}

std::optional<ScriptDescriptor> decodedList(const QJsonValue &value, int depth) {
  if (!value.isArray()) return std::nullopt;
  ScriptDescriptor list;
  list.type = Type::List;
  const QJsonArray items = value.toArray();
  for (const QJsonValue &item : items) {
    const auto inner = depth > 0 ? decoded(item, depth - 1) : std::nullopt;
    if (!inner) return std::nullopt;
    list.list.push_back(*inner);
  }
  return list;
}

QByteArray encodedFailure(const ScriptFailure &failure) {
  QJsonObject error{{QStringLiteral("message"), failure.message},
                    {QStringLiteral("start"), qint64(failure.rangeStart)},
                    {QStringLiteral("length"), qint64(failure.rangeLength)}};
  if (failure.number) error[QStringLiteral("number")] = *failure.number;
  return QJsonDocument(QJsonObject{{QStringLiteral("error"), error}}).toJson(QJsonDocument::Compact);
}

ScriptFailure decodedFailure(const QJsonObject &error) {
  ScriptFailure failure;
  const QJsonValue number = error[u"number"];
  if (number.isDouble()) failure.number = number.toInteger();
  failure.message = error[u"message"].toString();
  failure.rangeStart = error[u"start"].toInteger();
  failure.rangeLength = error[u"length"].toInteger();
  return failure;
}

// What a result may weigh before it is written as JSON; an escape takes six bytes for a unit of a text at
// most, so that little beyond a message is ever built.
qsizetype weight(const ScriptDescriptor &descriptor, int depth) {
  qsizetype sum = 24 + descriptor.text.size();
  for (const ScriptDescriptor &item : descriptor.list) {
    if (sum > kMostBytes || depth == 0) break;
    sum += weight(item, depth - 1);
  }
  return sum;
}

}  // namespace

QByteArray encodeOutcome(const ScriptOutcome &outcome) {
  QByteArray text = QByteArrayLiteral("{}");
  if (outcome.failure) text = encodedFailure(*outcome.failure);
  if (outcome.result && !outcome.failure) {
    const bool isSmall = weight(*outcome.result, kDeepest) <= kMostBytes;
    const auto result = isSmall ? encoded(*outcome.result, kDeepest) : std::nullopt;
    text =
        result
            ? QJsonDocument(QJsonObject{{QStringLiteral("result"), *result}}).toJson(QJsonDocument::Compact)
            : QByteArray();
  }
  if (!text.isEmpty() && text.size() <= kMostBytes) return text;
  const qint64 number = outcome.failure ? outcome.failure->number.value_or(kHandlerFailed) : kHandlerFailed;
  return encodedFailure({number, QStringLiteral("The result is too large to be sent."), 0, 0});
}

std::optional<ScriptOutcome> decodeOutcome(const QByteArray &text) {
  const QJsonDocument document = QJsonDocument::fromJson(text);
  if (!document.isObject()) return std::nullopt;
  const QJsonObject answer = document.object();
  if (answer.isEmpty()) return ScriptOutcome{};
  if (answer[u"error"].isObject())
    return ScriptOutcome{std::nullopt, decodedFailure(answer[u"error"].toObject())};
  const auto result = decoded(answer[u"result"], kDeepest);
  if (!result) return std::nullopt;
  return ScriptOutcome{result, std::nullopt};
}

}  // namespace keeperProtocol
