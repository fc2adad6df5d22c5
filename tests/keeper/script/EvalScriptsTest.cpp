#include "tests/keeper/script/EvalHarness.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class EvalScripts : public EvalHarness {};

TEST_F(EvalScripts, ErrorsAreCaughtByWhatTheyCarry) {
  check(
      {{u"try // error \"x\" number 5 // on error m number n // return m & n // end try"_qs, u"\"x5\""_qs},
       {u"try // error number 5 // on error number 6 // return 1 // end try"_qs, u"5 [error number 5]"_qs},
       {u"try // error \"x\" from 7 partial result {1} to text // on error m from f partial result p to t // "
        u"return {m, f, p, t is text} // end try"_qs,
        u"{\"x\", 7, {1}, true}"_qs},
       {u"try // error \"a\" // end try // return 3"_qs, u"3"_qs},
       {u"error \"why\""_qs, u"-2700 [error \"why\"]"_qs},
       {u"return x1"_qs, u"-2753 [x1]"_qs},
       {u"set r to h() // return r // on h() // return // end h"_qs, u"-2753 [r]"_qs},
       {u"return 1 + h() // on h() // return // end h"_qs, u"-2763 [1 + h()]"_qs}});
}

TEST_F(EvalScripts, VariablesPropertiesAndObjectsKeepToTheirScopes) {
  check({{u"set x to 5"_qs, u"5"_qs},
         {u"set x to 1 // f() // on f() // return x // end f"_qs, u"-2753 [x]"_qs},
         {u"global g // set g to 2 // return f() // on f() // global g // return g // end f"_qs, u"2"_qs},
         {u"property p : {1} // f() // return p // on f() // set end of p to 2 // end f"_qs, u"{1, 2}"_qs},
         {u"script s // property n : 1 // on inc(more) // set n to n + more // return n // end inc // end "
          u"script "
          u"// "
          u"s's inc(2) // tell s to inc(3) // return n of s"_qs,
          u"6"_qs},
         {u"on run // return 4 // end run"_qs, u"4"_qs},
         {u"return run script \"return 2 + 3\""_qs, u"5"_qs},
         {u"repeat with i from 10 to 1 by -4 // end repeat // return i"_qs, u"2"_qs},
         {u"set n to 0 // repeat // set n to n + 1 // if n > 3 then exit repeat // end repeat // n"_qs,
          u"4"_qs},
         {u"set n to 0 // repeat until n ≥ 2 // set n to n + 1 // end repeat // n"_qs, u"2"_qs},
         {u"set AppleScript's text item delimiters to \"x\" // return 1"_qs, u"1"_qs}});
}

TEST_F(EvalScripts, LibrariesAreTextFilesAndReadAnewOnceTheyChange) {
  ToyLibrary library;
  Interpreter interpreter(library);
  const QString path = writeFile(u"lib.scpt"_qs,
                                 "\xEF\xBB\xBFproperty n : 0\non f(a)\nset n to n + 1\nreturn a & n\nend f\n"
                                 "on g()\nreturn 1 / 0\nend g");
  const QString source =
      u"on run\nset libPath to POSIX file \"%1\"\nset lib to (load script file libPath)\n"
      u"tell lib\ntry\nreturn %2\non error err\nreturn \"error: \" & err\nend try\nend tell\nend run"_qs;
  const QString call = source.arg(path, u"f(\"a\")"_qs);
  EXPECT_EQ(shown(interpreter.run(call), call), u"\"a1\""_qs);
  EXPECT_EQ(shown(interpreter.run(call), call), u"\"a1\""_qs) << "each load is a fresh object";
  const QString failing = source.arg(path, u"g()"_qs);
  EXPECT_EQ(shown(interpreter.run(failing), failing), u"\"error: Can't divide 1 by zero.\""_qs);
  const QString bare = u"set lib to load script POSIX file \"%1\"\nreturn lib's g()"_qs.arg(path);
  EXPECT_EQ(shown(interpreter.run(bare), bare), u"-2701 [lib's g()]"_qs);
  writeFile(path, "on f(a)\nreturn a & \" changed\"\nend f");
  EXPECT_EQ(shown(interpreter.run(call), call), u"\"a changed\""_qs);
  const QString absent = u"load script POSIX file \"/no such\""_qs;
  EXPECT_EQ(shown(interpreter.run(absent), absent), u"-43 [load script POSIX file \"/no such\"]"_qs);
}

TEST_F(EvalScripts, WhatGoesTooFarIsStopped) {
  ToyLibrary library;
  ScriptLimits limits;
  limits.steps = 200'000;
  limits.memory = 8 * 1024 * 1024;
  Interpreter interpreter(library, limits);
  const auto number = [&](const QString &source) {
    return interpreter.run(source).failure.value_or(ScriptFailure()).number;
  };
  EXPECT_EQ(number(u"repeat\ntry\nrepeat\nend repeat\nend try\nend repeat"_qs), -2707);
  const QString countDown = u"f(%1)\non f(n)\nif n > 1 then f(n - 1)\nend f"_qs;
  EXPECT_FALSE(number(countDown.arg(511)).has_value()) << "the script itself is the first level of 512";
  EXPECT_EQ(number(countDown.arg(512)), -2706);
  EXPECT_EQ(number(u"set t to \"abcdefgh\"\nrepeat\nset t to t & t\nend repeat"_qs), -2708);
  EXPECT_EQ(number(u"set L to {1}\nrepeat\nset L to L & L\nend repeat"_qs), -2708);
  EXPECT_EQ(number(u"set L to {}\nrepeat 20000 times\nset L to {L}\nend repeat\nreturn L as text"_qs), -2706);
  EXPECT_EQ(number(u"set a to {}\nset b to {}\nset end of a to a\nset end of b to b\nreturn a = b"_qs),
            -2706);
  interpreter.stop();
  EXPECT_EQ(number(u"try\nreturn 1\nend try"_qs), -128);
}

TEST_F(EvalScripts, ACommandThatTakesTooLongTimesOut) {
  ToyLibrary library;
  library.onRefresh = [this] { time.sleep(3.0); };
  Interpreter interpreter(library);
  const QString source =
      u"tell application \"Toy Music\"\nwith timeout of %1 seconds\nrefresh track 1 of playlist 1\n"
      u"end timeout\nend tell"_qs;
  EXPECT_EQ(interpreter.run(source.arg(2)).failure.value_or(ScriptFailure()).number, -1712);
  EXPECT_FALSE(interpreter.run(source.arg(5)).failure.has_value());
}

}  // namespace
