#include <sstream>

#include "ctl/JsonReader.h"
#include "ctl/JsonWriter.h"

namespace {

std::string written(const Value &value) {
  std::ostringstream out;
  JsonWriter(out).value(value);
  return out.str();
}

/// What a document reads as, written again; the error with a "!" in front if it does not read.
std::string again(const std::string &document) {
  QString error;
  const auto value = JsonReader(QByteArrayView(document.data(), qsizetype(document.size()))).read(&error);
  return value ? written(*value) : (u"!"_qs + error).toStdString();
}

}  // namespace

TEST(Json, WhatIsReadIsWrittenAgain) {
  const std::pair<const char *, const char *> cases[] = {
      {R"({"b":1,"a":[true,false,null,"x"],"c":{}})", R"({"b": 1, "a": [true, false, null, "x"], "c": {}})"},
      {R"( [ ] )", "[]"},
      {R"({"a":1,"b":2,"a":3})", R"({"a": 3, "b": 2})"},
      {"9223372036854775807", "9223372036854775807"},
      {"-9223372036854775808", "-9223372036854775808"},
      {"9223372036854775808", "9223372036854776000.0"},
      {"[0.1, 1e2, -0, 2.0]", "[0.1, 100.0, 0, 2.0]"},
      {R"("\u00e9\n\t\"\\\/\u0001")", "\"\xC3\xA9\\n\\u0009\\\"\\\\/\\u0001\""},
      {R"("\ud83d\ude00")", "\"\xF0\x9F\x98\x80\""},
      {R"("a\ud83db\ude00")", R"("a\ud83db\ude00")"},
  };
  for (const auto &[document, expected] : cases) EXPECT_EQ(again(document), expected) << document;
}

TEST(Json, WhatIsNoJsonIsRefused) {
  for (const char *document :
       {"",           " ",     "{",   "[1",   "[1,]",      "[,1]",        "{\"a\"}", "{\"a\":}",
        "{\"a\":1,}", "{a:1}", "01",  "-",    "1.",        "1e",          ".5",      "+1",
        "tru",        "nul",   "\"a", "\"\\", "\"\\u12\"", "\"\\u+123\"", "\"\\x\"", "\"a\nb\"",
        "1 2",        "]",     "[1}", "'a'",  "\"\xFF\"",  "NaN",         "1e999"}) {
    EXPECT_EQ(again(document).substr(0, 1), "!") << document;
  }
}

TEST(Json, DepthCostsNoStack) {
  constexpr size_t kDepth = 300'000;
  const std::string document = std::string(kDepth, '[') + std::string(kDepth, ']');
  EXPECT_EQ(again(document), document);
  EXPECT_EQ(again(std::string(kDepth, '['))[0], '!');
}

TEST(Json, DatesAreIsoTextAndDataBase64) {
  const Dictionary row = Dictionary::make();
  row.set(Key(u"when"), Date{0.0});
  row.set(Key(u"bytes"), QByteArray("\x00\xFF", 2));
  EXPECT_EQ(written(row), R"({"when": "2001-01-01T00:00:00Z", "bytes": "AP8="})");
}
