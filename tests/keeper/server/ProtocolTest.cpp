#include <gtest/gtest.h>

#include <limits>

#include "platform/keeper/KeeperProtocol.h"
#include "platform/keeper/MessageReader.h"
#include "platform/keeper/OutcomeJson.h"

using namespace keeperProtocol;

namespace {

ScriptDescriptor listOf(std::vector<ScriptDescriptor> items) {
  ScriptDescriptor list;
  list.type = ScriptDescriptor::Type::List;
  list.list = std::move(items);
  return list;
}

ScriptDescriptor nested(int depth) {
  ScriptDescriptor list = listOf({});
  for (int i = 0; i < depth; ++i) list = listOf({list});
  return list;
}

void expectSame(const ScriptDescriptor &a, const ScriptDescriptor &b) {
  EXPECT_EQ(a.type, b.type);
  EXPECT_EQ(a.text, b.text);
  EXPECT_EQ(a.integer, b.integer);
  EXPECT_EQ(a.real, b.real);
  EXPECT_EQ(a.boolean, b.boolean);
  ASSERT_EQ(a.list.size(), b.list.size());
  for (size_t i = 0; i < a.list.size(); ++i) expectSame(a.list[i], b.list[i]);
}

TEST(KeeperProtocol, EveryResultArrivesAsItLeft) {
  const ScriptDescriptor results[] = {
      {},
      ScriptDescriptor::ofText(QString()),
      ScriptDescriptor::ofText(QStringLiteral("Ärger \"quoted\" \\ \n\t\u0001 \U0001F3B5")),
      ScriptDescriptor::ofInteger(std::numeric_limits<qint64>::min()),
      ScriptDescriptor::ofInteger(9007199254740993),
      ScriptDescriptor::ofReal(3.0),
      ScriptDescriptor::ofReal(0.1),
      ScriptDescriptor::ofReal(-1.5e300),
      ScriptDescriptor::ofBoolean(false),
      listOf({}),
      listOf({ScriptDescriptor::ofText(QStringLiteral("a")), listOf({ScriptDescriptor::ofInteger(1), {}})}),
      nested(kDeepest)};
  for (const ScriptDescriptor &result : results) {
    const auto back = decodeOutcome(encodeOutcome({result, std::nullopt}));
    ASSERT_TRUE(back && back->result && !back->failure)
        << encodeOutcome({result, std::nullopt}).toStdString();
    expectSame(*back->result, result);
  }
}

TEST(KeeperProtocol, AFailureKeepsItsNumberMessageAndRange) {
  const ScriptFailure failures[] = {{-1728, QStringLiteral("Can’t get track 1."), 17, 7},
                                    {std::nullopt, {}, 0, 0}};
  for (const ScriptFailure &failure : failures) {
    const auto back = decodeOutcome(encodeOutcome({std::nullopt, failure}));
    ASSERT_TRUE(back && back->failure && !back->result);
    EXPECT_EQ(back->failure->number, failure.number);
    EXPECT_EQ(back->failure->message, failure.message);
    EXPECT_EQ(back->failure->rangeStart, failure.rangeStart);
    EXPECT_EQ(back->failure->rangeLength, failure.rangeLength);
  }
  const auto neither = decodeOutcome(encodeOutcome({}));
  EXPECT_TRUE(neither && !neither->result && !neither->failure);
}

TEST(KeeperProtocol, WhatCannotBeSentIsAFailureThatSaysSo) {
  const ScriptDescriptor results[] = {nested(kDeepest + 1), nested(5000),
                                      ScriptDescriptor::ofReal(std::numeric_limits<double>::infinity()),
                                      ScriptDescriptor::ofText(QString(kMostBytes, u'a')),
                                      // Fits as a text, but not with every unit written as an escape.
                                      ScriptDescriptor::ofText(QString(kMostBytes / 3, QChar(1)))};
  for (const ScriptDescriptor &result : results) {
    const QByteArray text = encodeOutcome({result, std::nullopt});
    EXPECT_LE(text.size(), kMostBytes);
    const auto back = decodeOutcome(text);
    ASSERT_TRUE(back && back->failure);
    EXPECT_EQ(back->failure->number, kHandlerFailed);
  }
}

TEST(KeeperProtocol, WhatIsNoAnswerIsNotTakenForOne) {
  const char *texts[] = {"",
                         "[]",
                         "{\"result\":",
                         "{\"result\":1}",
                         "{\"result\":{\"type\":\"text\",\"value\":1}}",
                         "{\"result\":{\"type\":\"integer\",\"value\":1.5}}",
                         "{\"other\":{}}",
                         "{\"result\":{\"type\":\"odd\",\"value\":[]}}",
                         "{\"result\":{\"type\":\"list\",\"value\":[1]}}",
                         "{\"error\":\"text\"}"};
  for (const char *text : texts) EXPECT_FALSE(decodeOutcome(text)) << text;
  for (const char *text : {"{}", "{\"status\":true}", "null"}) EXPECT_FALSE(decodeStatus(text)) << text;
}

TEST(KeeperProtocol, RequestsArriveAsTheyLeftAndNothingElseIsOne) {
  const Request requests[] = {
      ScriptRequest{QStringLiteral("tell me \"x\"\r\n")}, StatusRequest{},
      ImportRequest{QStringLiteral("/a b.xml"), {{QStringLiteral("C:/"), QStringLiteral("/m/")}}},
      ExportRequest{QStringLiteral("/out.xml")}};
  for (const Request &request : requests) {
    const auto back = decodeRequest(encodeRequest(request), nullptr);
    ASSERT_TRUE(back);
    EXPECT_EQ(encodeRequest(*back), encodeRequest(request));
    EXPECT_EQ(back->index(), request.index());
  }
  const char *texts[] = {"",
                         "script",
                         "[]",
                         "{}",
                         "{\"script\":1}",
                         "{\"import\":\"a\",\"map\":[[\"a\"]]}",
                         "{\"script\":\"a\"} x",
                         "{\"script\":\"\xff\"}"};
  for (const char *text : texts) {
    QString error;
    EXPECT_FALSE(decodeRequest(text, &error)) << text;
    EXPECT_FALSE(error.isEmpty());
  }
}

TEST(KeeperProtocol, TheStatusArrivesWithAndWithoutAnImport) {
  Status status{QStringLiteral("1.0"),    QStringLiteral("/m"), 42, 300000, std::nullopt, true,
                QStringLiteral("damaged")};
  for (int i = 0; i < 2; ++i) {
    const auto back = decodeStatus(encodeStatus(status));
    ASSERT_TRUE(back);
    EXPECT_EQ(encodeStatus(*back), encodeStatus(status));
    EXPECT_EQ(back->importing.has_value(), i == 1);
    status.importing = Importing{5, 0, QStringLiteral("/l.xml")};
  }
}

TEST(MessageReader, CutsAStreamInWhateverPiecesItComes) {
  const QByteArray stream =
      framed("one") + framed("") + framed(QByteArray(1000, 'x')) + QByteArray("\0\0", 2);
  for (const qsizetype piece : {1, 3, 7, 2000}) {
    MessageReader reader;
    QList<QByteArray> messages;
    for (qsizetype at = 0; at < stream.size(); at += piece) {
      ASSERT_TRUE(reader.feed(stream.constData() + at, qMin(piece, stream.size() - at)));
      while (const auto message = reader.next()) messages += *message;
    }
    EXPECT_EQ(messages, (QList<QByteArray>{"one", "", QByteArray(1000, 'x')}));
    EXPECT_TRUE(reader.isInsideMessage());
  }
}

TEST(MessageReader, ALengthBeyondTheBoundEndsTheStreamBehindWhatWasWhole) {
  MessageReader reader;
  EXPECT_TRUE(reader.feed("\x01\x00\x00\x00", 4));  // exactly the bound
  MessageReader other;
  const QByteArray stream = framed("one") + QByteArray("\x01\x00\x00\x01", 4);
  EXPECT_TRUE(other.feed(stream.constData(), stream.size()));
  EXPECT_EQ(other.next(), QByteArray("one"));
  EXPECT_FALSE(other.next());
  EXPECT_FALSE(other.feed("x", 1));
}

}  // namespace
