#include "tests/ctl/CommandFixture.h"

class InspectTextTest : public CommandFixture {
 protected:
  /// The answer to one request, without its id and the line's end.
  std::string ask(const std::string &request) {
    EXPECT_EQ(run(QStringLiteral("inspect text"), "{\"id\": 7, " + request + "}\n"), 0) << err;
    const std::string head = "{\"id\": 7, ";
    EXPECT_EQ(out.substr(0, head.size()), head);
    return out.substr(head.size(), out.size() - head.size() - 2);
  }
};

TEST_F(InspectTextTest, EachKindOfOperationTakesItsArgumentsAndAnswers) {
  const std::pair<const char *, const char *> cases[] = {
      {R"("op": "simplified", "args": ["The Beatles"])", R"("beatles")"},
      {R"("op": "simplified", "args": [null])", "null"},
      {R"("op": "isSimpleEqualTo", "args": ["Bj\u00f6rk", "bjork"])", "true"},
      {R"("op": "stringWithoutWords", "args": ["The cat", ["the"]])", R"("cat")"},
      {R"("op": "minorWords", "args": [])", R"(["a", "an", "and", "of", "the", "is"])"},
      {R"("op": "plainASCIIString", "args": ["\u00c9t\u00e9"])", R"("Ete")"},
      {R"("op": "stringByDeletingCharactersInSet", "args": ["a-b.c", "-."])", R"("abc")"},
      {R"("op": "containsString", "args": ["Hello", null])", "false"},
      {R"("op": "stringWithStrippedEnclosedByCharToChar", "args": ["a<b>c", "<", ">"])", R"("ac")"},
      {R"("op": "nameScore", "args": ["The Beatles"])", "14"},
      {R"("op": "nameScore", "args": [null])", "0"},
      {R"("op": "normalizedString", "args": ["Beatles, The"])", R"("The Beatles")"},
      {R"("op": "reversedCompare", "args": ["a.b", "a.c"])", "-1"},
      {R"("op": "metaphoneWord", "args": ["Xavier"])", R"("ksfr")"},
      {R"("op": "metaphoneWithoutMinorWords", "args": ["the night", true])", R"("nkt")"},
      {R"("op": "levenshtein", "args": ["flaw", "lawn"])", "2.0"},
      {R"("op": "phraseCompare", "args": ["hello world", "world hello", 5])", "0.042"},
      {R"("op": "phraseCompare", "args": ["abc", null, 5])", "42.0"},
      {R"("op": "ampersandCodeEquivalentAtIndex", "args": ["a&#65;", 1])", R"({"code": 65, "length": 5})"},
      {R"("op": "ampersandCodeEquivalentAtIndex", "args": ["&", 1e300])", R"({"code": 0, "length": 0})"},
      {R"("op": "stringByReplacingAmpersandCodes", "args": ["&amp;&amp"])", R"("&&")"},
      {R"("op": "containsZeroWidthCharacter", "args": [null])", "false"},
      {R"("op": "stringWithVisibleZeroWidthCharacters", "args": ["\ufeff"])", "\"\xE2\x90\xA3\""},
      {R"("op": "stringByReplacingOccurrencesOfString", "args": ["aA", "a", null, "caseInsensitive"])",
       R"("")"},
      {R"("op": "stringByReplacingOccurrencesOfString", "args": ["aA", "a", "b", null])", R"("bA")"},
      {R"("op": "pathIsInTrash", "args": ["/disk/.Trash-1000/files/a"])", "true"},
      {R"("op": "CRC", "args": ["00"])", "0"},
      {R"("op": "containsData", "args": ["00FF12", "ff"])", "true"},
      {R"("op": "containsData", "args": ["00", null])", "false"},
      {R"("op": "hexadecimalStringRepresentation", "args": ["00ff"])", R"("00FF")"},
      {R"("op": "plistDateValue", "args": ["2008-13-30T12:00:00Z"])", "null"},
      {R"("op": "formatCount", "args": [1536])", R"("1.5K")"},
  };
  for (const auto &[request, expected] : cases)
    EXPECT_EQ(ask(request), std::string("\"result\": ") + expected) << request;
}

TEST_F(InspectTextTest, TheTableOfARequestIsItsOwnAndKeepsItsOrder) {
  const std::string beatles = R"("op": "simplified", "args": ["Beatles"])";
  EXPECT_EQ(ask(beatles + R"(, "ignorePlurals": true)"), R"("result": "beatle")");
  EXPECT_EQ(ask(beatles), R"("result": "beatles")");
  EXPECT_EQ(ask(beatles + R"(, "simplifiers": {"eat": "x"})"), R"("result": "bxles")");
  const std::string tie = R"("op": "simplified", "args": ["ab"], "simplifiers": )";
  EXPECT_EQ(ask(tie + R"({"b": "1", "a": "2b"})"), R"("result": "2b1")");
  EXPECT_EQ(ask(tie + R"({"a": "2b", "b": "1"})"), R"("result": "211")");
}

TEST_F(InspectTextTest, ABadRequestGetsAnErrorAndTheNextAnAnswer) {
  const char *requests[] = {R"("op": "nonsense", "args": [])",
                            R"("args": ["a"])",
                            R"("op": 7, "args": ["a"])",
                            R"("op": "simplified")",
                            R"("op": "simplified", "args": "a")",
                            R"("op": "simplified", "args": [1])",
                            R"("op": "simplified", "args": ["a", "b"])",
                            R"("op": "stringWithoutWords", "args": ["a", "b"])",
                            R"("op": "stringWithoutWords", "args": ["a", [1]])",
                            R"("op": "stringWithStrippedEnclosedByChar", "args": ["a", "<<", ">"])",
                            R"("op": "metaphoneWithoutMinorWords", "args": ["a", 1])",
                            R"("op": "phraseCompare", "args": ["a", "b"])",
                            R"("op": "doPutInTrash", "args": ["/tmp/a"])",
                            R"("op": "CRC", "args": ["0"])",
                            R"("op": "CRC", "args": ["0g"])",
                            R"("op": "formatCount", "args": [true])",
                            R"("op": "simplified", "args": ["a"], "simplifiers": {"a": 1})",
                            R"("op": "simplified", "args": ["a"], "simplifiers": [])",
                            R"("op": "simplified", "args": ["a"], "ignorePlurals": 1)"};
  for (const char *request : requests) EXPECT_EQ(ask(request).substr(0, 9), "\"error\": ") << request;
  const std::string lines =
      "{\n\n[1]\n\"x\"\n{\"id\": 9223372036854775807, \"op\": \"CRC\", \"args\": [\"\"]}\n\xFF\n"
      "{\"id\": \"b\", \"op\": \"simplified\", \"args\": [\"A\"]}";
  ASSERT_EQ(run(QStringLiteral("inspect text"), lines), 0);
  const QStringList answers = QString::fromStdString(out).split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(answers.size(), 6);
  for (const int bad : {0, 1, 2, 4})
    EXPECT_TRUE(answers[bad].startsWith(QStringLiteral("{\"id\": null, \"error\": "))) << bad;
  EXPECT_EQ(answers[3], QStringLiteral("{\"id\": 9223372036854775807, \"result\": 0}"));
  EXPECT_EQ(answers[5], QStringLiteral("{\"id\": \"b\", \"result\": \"a\"}"));
}

TEST_F(InspectTextTest, ALoneSurrogateComesBackAsItWent) {
  EXPECT_EQ(ask(R"("op": "stringByDeletingCharactersInSet", "args": ["a\ud83db", "b"])"),
            R"("result": "a\ud83d")");
}
