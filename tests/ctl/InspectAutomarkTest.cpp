#include "tests/ctl/CommandFixture.h"

class InspectAutomarkTest : public CommandFixture {
 protected:
  int ask(const std::string &request) { return run(QStringLiteral("inspect automark"), request); }
};

TEST_F(InspectAutomarkTest, EachGroupAnswersWithItsTwoRows) {
  const QString large = writeFile(QStringLiteral("large.mp3"), QByteArray(100000, 'x'));
  const QString small = writeFile(QStringLiteral("small.mp3"), QByteArray(99999, 'x'));
  const std::string files = R"({"DupeGroup": 1, "Path": ")" + large.toStdString() +
                            R"("}, {"DupeGroup": 1, "Bit Rate": 320, "Path": ")" + small.toStdString() +
                            R"("})";
  const std::pair<std::string, const char *> cases[] = {
      {R"({"rows": []})", "[]"},
      {R"({"rows": [{}, {}]})", "[[1, 1]]"},
      {R"({"rows": [{"DupeGroup": 1}, {"DupeGroup": 2}, {"DupeGroup": 2}, {"DupeGroup": 1}]})",
       "[[0, 0], [2, 2], [3, 3]]"},
      {R"({"rows": [{"DupeGroup": 1, "Play Count": 4, "Bit Rate": 128}, {"DupeGroup": 1, "Bit Rate": 192}],
           "prefs": {"preferInfoTypes": ["1"]}})",
       "[[0, 1]]"},
      {R"({"rows": [{"Date Added": "2008-02-29T12:00:00Z"}, {"Date Added": "2009-02-29T12:00:00Z"}, {}],
           "prefs": {"preferInfoTypes": ["6"], "preferAudioData15": 6}})",
       "[[1, 1]]"},
      {R"({"rows": [{"Date Added": 226000000}, {"Date Added": "no date"}],
           "prefs": {"preferInfoTypes": ["6"]}})",
       "[[0, 0]]"},
      {R"({"rows": [{"Kind": "A b"}, {"Kind": "c"}], "prefs": {"preferAudioFileType": true,
           "preferAudioFileTypeNumber": 2}, "kinds": {"2": ["b"], "3": "C"}})",
       "[[1, 0]]"},
      {"{\"rows\": [" + files + "]}", "[[1, 0]]"},
  };
  // What the user prefers is of no account here.
  setPreference(QStringLiteral("preferAudioData15"), 1);
  for (const auto &[request, expected] : cases) {
    EXPECT_EQ(ask(request), 0) << request << err;
    EXPECT_EQ(out, std::string(expected) + "\n") << request;
  }
  const QString file = writeFile(QStringLiteral("request.json"), "{\"rows\": [{}]}");
  EXPECT_EQ(run(QStringLiteral("inspect automark ") + file), 0);
  EXPECT_EQ(out, "[[0, 0]]\n");
}

TEST_F(InspectAutomarkTest, AnythingElseGetsOneLineAndNoAnswer) {
  const std::pair<const char *, const char *> cases[] = {
      {"", "cut off at byte 0"},
      {"[]", "the request is no object"},
      {"{}", "\"rows\" is no array"},
      {R"({"rows": 7})", "\"rows\" is no array"},
      {R"({"rows": [{}, 5]})", "row 1 is no object"},
      {R"({"rows": [[{}]]})", "row 0 is no object"},
      {R"({"rows": [null]})", "row 0 is no object"},
      {R"({"rows": [], "prefs": []})", "\"prefs\" is no object"},
      {R"({"rows": [], "kinds": "x"})", "\"kinds\" is no object"},
      {R"({"rows": []} {})", "more than one value at byte 13"},
  };
  for (const auto &[request, message] : cases) {
    EXPECT_EQ(ask(request), 1) << request;
    EXPECT_EQ(err, std::string("tallyfenctl: ") + message + "\n") << request;
    EXPECT_EQ(out, "") << request;
  }
  EXPECT_EQ(run(QStringLiteral("inspect automark /nowhere/x.json")), 1);
  EXPECT_EQ(err, "tallyfenctl: /nowhere/x.json: No such file or directory\n");
  EXPECT_EQ(ask(R"({"rows": [{"DupeGroup": [1], "Bit Rate": {}, "Date Added": [], "Kind": 7, "Path": false,
                    "Play Count": 1e300, "Year": -9223372036854775808}],
                    "prefs": {"preferInfoTypes": {"0": 1}, "preferAudioData15": "x"}, "kinds": {"x": [[1]]}})"),
            0)
      << err;
  EXPECT_EQ(out, "[[0, 0]]\n");
}
