#include "keeper/script/ScriptParser.h"

#include <gtest/gtest.h>

#include "keeper/script/ParsedScripts.h"
#include "tests/keeper/script/ToyDictionary.h"
#include "tests/keeper/script/TreeDump.h"

namespace {

struct Case {
  const char *source;
  const char *tree;
};

QString dumpOf(const QString &source) {
  try {
    return treeDump::of(ScriptParser::parse(source, toyDictionary::lookup())->script);
  } catch (const ScriptError &error) {
    return QStringLiteral("%1 at %2+%3: %4")
        .arg(error.number)
        .arg(error.range.start)
        .arg(error.range.length)
        .arg(error.message);
  }
}

void check(const std::vector<Case> &cases, const QString &before = {}, const QString &after = {}) {
  for (const Case &each : cases) {
    const QString dumped = dumpOf(before + QString::fromUtf8(each.source) + after);
    EXPECT_EQ(dumped.toStdString(), each.tree) << each.source;
  }
}

/// Inside `tell application "Music"`, without the block in the tree.
void checkTold(const std::vector<Case> &cases) {
  for (const Case &each : cases) {
    const QString source = QStringLiteral("tell application \"Music\"\n") + QString::fromUtf8(each.source) +
                           QStringLiteral("\nend tell");
    EXPECT_EQ(dumpOf(source).toStdString(), "[(tell (app \"Music\") [" + std::string(each.tree) + "])]")
        << each.source;
  }
}

}  // namespace

TEST(ScriptParser, WordsBlanksCommentsAndLineEndsOfEveryKind) {
  check({
      {"\xEF\xBB\xBFset X to 1 -- end\rset y to |X y| # more\r\n(* a (* b *) \n c *) return the y",
       "[(set x 1) (set y X y) (return y)]"},
      {"set x to 1 + \xC2\xAC  \r\n 2", "[(set x (1 + 2))]"},
      {R"("a\"\\\n\t" & "two
lines")",
       "[(\"a\"\\\n\t\" & \"two\nlines\")]"},
      {"{12, 1.5, 1.0E+3, 536870912, -5}", "[(list 12 1.5r 1000r 536870912r (neg 5))]"},
      {"{missing value, null, true, tab, monday, pi}",
       "[(list missing #null true \"\t\" #monday 3.14159265359r)]"},
      {"\xC2\xAB"
       "data utxt00480069\xC2\xBB as Unicode text",
       "[(as \"Hi\" text)]"},
      {"d as \xC2\xAB"
       "class isot\xC2\xBB as string",
       "[(as (as d \xC2\xAB"
       "class isot\xC2\xBB) text)]"},
      {"\xC2\xAB"
       "property pPIS\xC2\xBB of x is \xC2\xAB"
       "constant ****kNon\xC2\xBB",
       "[((prop \xC2\xABproperty pPIS\xC2\xBB of:x) = #\xC2\xAB"
       "constant ****kNon\xC2\xBB)]"},
      {"", ""},
  });
}

TEST(ScriptParser, OperatorsBindByTheirPrecedence) {
  check({
      {"1 + 2 * 3 - -4 ^ 2 ^ x", "[(1 + (2 * 3) - ((neg 4) ^ (2 ^ x)))]"},
      {"\"a\" & n as text", "[(as (\"a\" & n) text)]"},
      {"x as text & \"b\"", "[((as x text) & \"b\")]"},
      {"not a is b and c or d", "[(((not (a = b)) and c) or d)]"},
      {"a div b mod c = d & e < f", "[((a div b mod c) = ((d & e) < f))]"},
      {"a isn't b", "[(a != b)]"},
      {"a is not less than or equal to b", "[(a > b)]"},
      {"a does not come before b", "[(a >= b)]"},
      {"a is not greater than b", "[(a <= b)]"},
      {"a doesn't contain b or a begins with b", "[((a lacks b) or (a starts b))]"},
      {"x is not in {1} and y is contained by z", "[((x notin (list 1)) and (y in z))]"},
      {"a /= b or a \xE2\x89\xA4 b", "[((a != b) or (a <= b))]"},
      {"application \"Music\" is not running", "[(not (prop running of:(app \"Music\")))]"},
  });
}

TEST(ScriptParser, ReferencesKeepTheirChains) {
  check({
      {"item 1 of rest of L", "[(key <item> 1 of:(prop rest of:l))]"},
      {"text i thru (i + 3) of h", "[(range <text> i (i + 3) of:h)]"},
      {"characters 2 thru end of s", "[(range <character> 2 -1 of:s)]"},
      {"last item of L's reverse", "[(nth <item> -1 of:(prop reverse of:l))]"},
      {"2nd word of \"a b\"", "[(nth <word> 2 of:\"a b\")]"},
      {"AppleScript's text item delimiters", "[(prop text item delimiters of:AppleScript)]"},
      {"item -1 in my f(1, {2})", "[(key <item> (neg 1) of:(call f 1 (list 2) on:me))]"},
      {"S's f(1) & f(2) of S", "[((call f 1 on:s) & (call f 2 on:s))]"},
      {"number of items in L", "[(count (every <item> of:l))]"},
      {"a reference to name of x", "[(ref (prop name of:x))]"},
      {"n of {n:1, |N|:2}", "[(prop n of:(record n:1 N:2))]"},
      {"offset of character 1 of a in b & c", "[(offset (key <character> 1 of:a) (b & c))]"},
      {"POSIX path of (POSIX file p as alias)", "[(prop posix path of:(as (posix-file p) alias))]"},
      {"load script file p", "[(load-script (file p))]"},
      {"round 1.5 rounding down", "[(round 1.5r \"down\")]"},
      {"(current date) - (time to GMT)", "[((current-date) - (time-to-gmt))]"},
      {"string id {65} & character id 31 & id of s",
       "[((string-id (list 65)) & (character-id 31) & (prop id of:s))]"},
      {"text of x", "[(every <text> of:x)]"},
  });
}

TEST(ScriptParser, TheDictionarysWordsHoldInsideItsBlocksOnly) {
  checkTold({
      {"get persistent ID of track i of P", "(get (prop persistent id of:(key <track> i of:p)))"},
      {"name of every track of library playlist 1 whose artist is a and (year > 2)",
       "(prop name of:(every <track> of:(key <library playlist> 1) whose:(((prop artist) = a) and "
       "((prop year) > 2))))"},
      {"track 1 of every playlist whose name is n",
       "(key <track> 1 of:(every <playlist> whose:((prop name) = n)))"},
      {"track 1 of P whose name is n", "(key <track> 1 of:p whose:((prop name) = n))"},
      {"tracks 2 thru 5 of user playlist \"x\"", "(range <track> 2 5 of:(key <user playlist> \"x\"))"},
      {"file track id 77 of P exists", "(exists (id <file track> 77 of:p))"},
      {"not (exists (some track of P whose name is n))",
       "(not (exists (some <track> of:p whose:((prop name) = n))))"},
      {"count each track of P", "(count track p)"},
      {"count of artworks of t", "(count (every <artwork> of:t))"},
      {"artwork 1 of t", "(key <artwork> 1 of:t)"},
      {"class of t is file track", "((prop class of:t) = <file track>)"},
      {"duplicate every track of P to folder playlist named \"f\"",
       "(do duplicate (every <track> of:p) to:(name <folder playlist> \"f\"))"},
      {"set m to make new user playlist at end of folder playlist 2 with properties {name:\"n\", album "
       "artist:1}",
       "(set m (do make new:<user playlist> at:(end (key <folder playlist> 2)) "
       "with properties:(record name:\"n\" album artist:1)))"},
      {"play t with once", "(do play t once:true)"},
      {"search P for \"x\" only none", "(do search p for:\"x\" only:#none)"},
      {"next track", "(do next track)"},
      {"set fixed indexing to true", "(set (prop fixed indexing) true)"},
      {"my refreshAll(its name)", "(call refreshall (prop name of:it) on:me)"},
      {"tell P to delete (every track whose rating kind is user)",
       "(tell p [(do delete (every <track> whose:((prop rating kind) = #user)))])"},
      {"\xC2\xAB"
       "event hookPlay\xC2\xBB t",
       "(do \xC2\xAB"
       "event hookPlay\xC2\xBB t)"},
  });
  check({{"using terms from application \"Music\"\non f(a)\nreturn album of a\nend f\nend using terms from",
          "(on f(a) [(return (prop album of:a))])"},
         {"tell application id \"com.example.music\" to quit",
          "[(tell (app-id \"com.example.music\") [(do quit)])]"},
         {"persistent of x", "[(prop persistent of:x)]"}});
}

TEST(ScriptParser, StatementsBecomeTheirParts) {
  check({
      {"if a then return b\nif a then\nb\nelse if c then\nd\nelse\ne\nend",
       "[(if a [(return b)]) (if a [b] c [d] [e])]"},
      {"if a then b else c", "[(if a [b] [c])]"},
      {"repeat\nexit repeat\nend repeat\nrepeat 3 times\nend\nrepeat while a\nend\nrepeat until b\nend",
       "[(repeat [(exit)]) (times 3) (while a) (until b)]"},
      {"repeat with i from 1 to (count of L) by 2\nend\nrepeat with x in L\nend repeat",
       "[(with i 1 (count l) 2) (each x l)]"},
      {"try\na\nend try\ntry\na\non error msg number n from o partial result r to t\nb\nend try",
       "[(try [a]) (try [a] (on msg number:n from:o partial:r to:t) [b])]"},
      {"try\na\non error number -1728\nend error", "[(try [a] (on number:-1728))]"},
      {"error \"x\" & y number n + 1", "[(error (\"x\" & y) number:(n + 1))]"},
      {"set {a, {b}} to c\nset end of L to 1\nset my x to y's z\ncopy 1 to item 2 of L",
       "[(set (list a (list b)) c) (set (end l) 1) (set (prop x of:me) (prop z of:y)) "
       "(copy 1 (key <item> 2 of:l))]"},
      {"with timeout of 60 seconds\nlog 1\nend timeout", "[(timeout 60 [(log 1)])]"},
      {"considering case, hyphens and white space but ignoring punctuation\nend considering",
       "[(considering case,hyphens,white space /punctuation)]"},
      {"global a, b\nlocal c\nreturn", "[(global a b) (local c) (return)]"},
  });
}

TEST(ScriptParser, DeclarationsStandBesideTheStatements) {
  check({
      {"property p : 1\non f(a, b)\nreturn a\nend f\nto g()\nend\nf(1)",
       "(property p 1) (on f(a,b) [(return a)]) (on g()) [(call f 1)]"},
      {"on run argv\nend run", "(on run(*argv))"},
      {"on run {a, b}\nend", "(on run(a,b))"},
      {"script S\nproperty q : {}\non h()\nend h\nend script\ntell S to h()",
       "(script s (property q (list)) (on h())) [(tell s [(call h)])]"},
      {"on f()\nscript T\nend script\nreturn T\nend f", "(on f() [(script t) (return t)])"},
  });
}

TEST(ScriptParser, WhatDoesNotFitIsNamedWithItsPlace) {
  struct Wrong {
    const char *source;
    qint64 number;
    qsizetype start;
    qsizetype length;
  };
  for (const Wrong &wrong : std::vector<Wrong>{
           {"set x to", -2741, 8, 0},
           {"persistent ID of x", -2740, 11, 2},
           {"every track of P", -2741, 6, 5},
           {"tell application \"Nobody\"\nplay track 1\nend tell", -2740, 31, 5},
           {"using terms from application \"Nobody\"\nend", -10814, 17, 20},
           {"tell application \"Music\" to set name of foo bar to 1", -2740, 44, 3},
           {"tell application \"Music\" to track of P", -2741, 34, 2},
           {"tell application \"Music\" to search P for 1 for 2", -2750, 47, 1},
           {"1 < 2 < 3", -2740, 6, 1},
           {"a = not b", -2741, 4, 3},
           {"if a\nend", -2741, 4, 0},
           {"if a then\nend tell", -2741, 14, 4},
           {"repeat 3\nend", -2741, 8, 0},
           {"on f()\nend g", -2741, 11, 1},
           {"tell x\nbeep", -2741, 11, 0},
           {"set 3 to 4", -2741, 4, 1},
           {"set list to 4", -2741, 4, 4},
           {"\"a\\q\"", -2741, 2, 2},
           {"\"abc", -2741, 0, 1},
           {"(* x", -2741, 0, 2},
           {"a ¬ b", -2741, 2, 1},
           {"«data utxt0»", -2741, 0, 12},
           {"«data utxtD8ZZ»", -2741, 0, 15},
           {"«data rdat00»", -2741, 0, 13},
           {"date \"today\"", -2740, 5, 7},
           {"1e999", -2702, 0, 5},
           {"a $ b", -2741, 2, 1},
           {"{1,}", -2741, 3, 1},
           {"on f(a, a)\nend", -2750, 8, 1},
           {"property a : 1\nproperty A : 2", -2751, 24, 1},
           {"on f()\nend\non F()\nend", -2752, 11, 4},
           {"on run\nend\nbeep()", -2752, 11, 6},
           {"local a\nglobal a", -2754, 15, 1},
           {"exit repeat", -2755, 0, 11},
           {"repeat\nscript s\nexit repeat\nend\nend", -2755, 16, 11},
           {"considering case but ignoring case\nend", -2720, 0, 34},
           {"considering numeric strings\nend", -2741, 12, 7},
           {"count of L whose x", -2740, 11, 5},
       }) {
    const QString source = QString::fromUtf8(wrong.source);
    try {
      ScriptParser::parse(source, toyDictionary::lookup());
      ADD_FAILURE() << wrong.source;
    } catch (const ScriptError &error) {
      EXPECT_EQ(error.number, wrong.number) << wrong.source << ": " << error.message.toStdString();
      EXPECT_EQ(error.range.start, wrong.start) << wrong.source << ": " << error.message.toStdString();
      EXPECT_EQ(error.range.length, wrong.length) << wrong.source << ": " << error.message.toStdString();
    }
  }
}

TEST(ScriptParser, DeepNestingIsAnErrorAndLengthIsNone) {
  const auto number = [](const QString &source) -> qint64 {
    try {
      ScriptParser::parse(source, toyDictionary::lookup());
      return 0;
    } catch (const ScriptError &error) {
      return error.number;
    }
  };
  const auto many = [](const char *text, int count = 100000) {
    return QString::fromUtf8(text).repeated(count);
  };
  EXPECT_EQ(number(many("(", 400) + u'1' + many(")", 400)), 0);
  for (const char *opening :
       {"(", "{", "- ", "not ", "f(", "x of ", "if a then ", "tell x\n", "1 ^ ", "get ", "count ", "exists ",
        "script s\n", "POSIX file ", "a reference to ", "before "}) {
    EXPECT_EQ(number(many(opening) + u'1'), -2706) << opening;
  }
  EXPECT_EQ(number(u'x' + many("'s x")), -2706);
  EXPECT_EQ(number(u'x' + many(" as text & 1")), -2706);
  EXPECT_EQ(number(many("(", 400) + u'x' + many("'s x", 300) + u')' + many("'s x", 300)), -2706);
  EXPECT_EQ(number(u'1' + many(" + 1") + many("\nset x to 1") + QStringLiteral("\nlocal a") + many(", b")),
            0);
  EXPECT_EQ(number(many("the ") + u'1'), 0);
}

TEST(ScriptParser, RangesCoverTheWordsOfTheirNodes) {
  const ParsedScriptPtr parsed = ScriptParser::parse(
      QStringLiteral("x\nset y to (name of t's b) & \"c\" -- d"), toyDictionary::lookup());
  const scriptTree::Statement &statement = parsed->script.statements.at(1);
  EXPECT_EQ(parsed->textAt(statement.range), QStringLiteral("set y to (name of t's b) & \"c\""));
  const scriptTree::Expression &value = *std::get<scriptTree::Set>(statement.form).value;
  EXPECT_EQ(parsed->textAt(value.range), QStringLiteral("(name of t's b) & \"c\""));
  const scriptTree::Expression &name = *std::get<scriptTree::Operation>(value.form).first;
  EXPECT_EQ(parsed->textAt(std::get<scriptTree::Property>(name.form).container->range),
            QStringLiteral("t's b"));
}

TEST(ParsedScripts, ATextThatComesAgainIsNotParsedAgain) {
  ParsedScripts scripts(toyDictionary::lookup());
  const auto text = [](size_t number) { return QStringLiteral("return %1").arg(number); };
  const ParsedScriptPtr first = scripts.parsed(text(0));
  for (size_t number = 1; number < ParsedScripts::kMost; ++number) scripts.parsed(text(number));
  EXPECT_EQ(scripts.parsed(text(0)), first);
  const ParsedScriptPtr second = scripts.parsed(text(2));
  scripts.parsed(QStringLiteral("return \"new\""));
  EXPECT_EQ(scripts.parsed(text(0)), first) << "the one asked for longest ago goes, which is 1";
  EXPECT_EQ(scripts.parsed(text(2)), second);
  // One long text pushes out what does not fit beside it.
  scripts.parsed(QStringLiteral("return 1 --") + QString(ParsedScripts::kMostUnits - 11, u'x'));
  EXPECT_NE(scripts.parsed(text(0)), first);
}
