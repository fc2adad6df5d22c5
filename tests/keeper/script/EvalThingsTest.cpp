#include "tests/keeper/script/EvalHarness.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class EvalThings : public EvalHarness {};

const QString kLibrary = u"library playlist 1"_qs;

TEST_F(EvalThings, EveryFormOfASpecifierFindsItsThing) {
  checkTold(
      {{u"version"_qs, u"\"1.2\""_qs},
       {u"name of track 2 of library playlist 1"_qs, u"\"Two\""_qs},
       {u"name of track -1 of playlist 1"_qs, u"\"Three\""_qs},
       {u"name of first track of user playlist \"road\""_qs, u"\"One\""_qs},
       {u"name of last file track of playlist \"Library\""_qs, u"\"Three\""_qs},
       {u"name of middle track of playlist 1"_qs, u"\"Two\""_qs},
       {u"name of track id 5 of playlist 1"_qs, u"\"One\""_qs},
       {u"name of every track of playlist 1"_qs, u"{\"One\", \"Two\", \"Three\"}"_qs},
       {u"artist of tracks 1 thru 2 of playlist 1"_qs, u"{\"Ann\", \"Ann\"}"_qs},
       {u"class of track 1 of playlist 1 is file track"_qs, u"true"_qs},
       {u"size of track 1 of playlist 1"_qs, u"5e+09"_qs},
       {u"POSIX path of (get location of track 1 of playlist 1)"_qs, u"\"/music/One\""_qs},
       {u"tell track 2 of playlist 1 // name // end tell"_qs, u"\"Two\""_qs},
       {u"tell playlist 1 // name of track 2 // end tell"_qs, u"\"Two\""_qs},
       {u"track 1 of playlist 1 is first track of user playlist \"Road\""_qs, u"true"_qs},
       {u"name of tracks 1 thru 2 of playlist 1 whose name is not \"One\""_qs, u"{\"Two\", \"Three\"}"_qs},
       {u"name of track 2 of playlist 1 whose name is not \"One\""_qs, u"\"Three\""_qs},
       {u"name of track \"two\" of playlist 1 whose artist is \"Ann\""_qs, u"\"Two\""_qs},
       {u"every track of playlist 1 // return result's class is list"_qs, u"true"_qs},
       {u"track 1 of playlist 1"_qs, u"none"_qs}});
}

TEST_F(EvalThings, WhatIsNotThereIsAnErrorAtItsPlace) {
  checkTold({{u"name of track 4 of playlist 1"_qs, u"-1728 [track 4 of playlist 1]"_qs},
             {u"track 0 of playlist 1"_qs, u"-1719 [track 0 of playlist 1]"_qs},
             {u"playlist \"none such\""_qs, u"-1728 [playlist \"none such\"]"_qs},
             {u"first track of playlist 1 whose name is \"x\""_qs,
              u"-1728 [first track of playlist 1 whose name is \"x\"]"_qs},
             {u"name of tracks of user playlist \"Smart\""_qs,
              u"-1728 [name of tracks of user playlist \"Smart\"]"_qs},
             {u"set L to tracks of user playlist \"Smart\" // name of L"_qs, u"-1728 [name of L]"_qs},
             {u"track \"One\" of playlist 1 whose artist is \"Bo\""_qs,
              u"-1728 [track \"One\" of playlist 1 whose artist is \"Bo\"]"_qs},
             {u"every character of \"ab\" whose it is \"b\""_qs,
              u"-1728 [every character of \"ab\" whose it is \"b\"]"_qs},
             {u"album of playlist 1"_qs, u"-1728 [album of playlist 1]"_qs},
             {u"set persistent ID of track 1 of playlist 1 to \"x\""_qs,
              u"-10003 [persistent ID of track 1 of playlist 1]"_qs},
             {u"duplicate track 1 of playlist 1 to playlist 1"_qs,
              u"-10006 [duplicate track 1 of playlist 1 to playlist 1]"_qs}});
}

TEST_F(EvalThings, CountsAndExistenceNeedNoThings) {
  checkTold({{u"count of tracks of playlist 1"_qs, u"3"_qs},
             {u"count each track of playlist 1"_qs, u"3"_qs},
             {u"(count of tracks of every user playlist)"_qs, u"0"_qs},
             {u"exists playlist \"Road\""_qs, u"true"_qs},
             {u"exists (some track of playlist 1 whose name is \"x\")"_qs, u"false"_qs},
             {u"playlist \"x\" exists"_qs, u"false"_qs},
             {u"exists every track of user playlist \"Smart\""_qs, u"false"_qs}});
}

TEST_F(EvalThings, TestsIgnoreCaseAndTakeWhatTheyCanGet) {
  checkTold(
      {{u"name of (first track of playlist 1 whose name is \"two\")"_qs, u"\"Two\""_qs},
       {u"considering case // name of every track of playlist 1 whose name is \"two\" // end considering"_qs,
        u"{\"Two\"}"_qs},
       {u"count of (every user playlist whose (name is \"ROAD\") and (smart is false) and (special kind is none))"_qs,
        u"2"_qs},
       {u"name of every track of playlist 1 whose (played count > 5) and not (name ends with \"o\")"_qs,
        u"{\"Three\"}"_qs},
       {u"set x to 6 // name of every track of playlist 1 whose played count is x - 1 or played count is x"_qs,
        u"{\"One\", \"Two\"}"_qs},
       {u"name of every user playlist whose (count of tracks) > 1"_qs, u"{\"Road\"}"_qs},
       {u"name of (every track of playlist 1 where its name contains \"t\")"_qs, u"{\"Two\", \"Three\"}"_qs},
       {u"count of (every track of playlist 1 whose played date < (current date) or name is \"One\")"_qs,
        u"1"_qs},
       {u"(every track of playlist 1 whose name is \"x\")"_qs, u"{}"_qs}});
}

TEST_F(EvalThings, APersistentIDIsLookedUpAndNotWalked) {
  ToyLibrary library;
  Interpreter interpreter(library);
  const QString source =
      u"tell application \"Toy Music\"\nset x to \"0000000000000006\"\n"
      u"return name of (first file track of library playlist 1 whose "
      u"(name is \"two\") and (persistent ID is x))\nend tell"_qs;
  EXPECT_EQ(shown(interpreter.run(source), source), u"\"Two\""_qs);
  EXPECT_EQ(library.root.things.front()->lookUps, 1);
}

TEST_F(EvalThings, ChangesReachTheThings) {
  checkTold(
      {{u"set artist of track 1 of playlist 1 to \"Bo\" // artist of track 1 of playlist \"Road\""_qs,
        u"\"Bo\""_qs},
       {u"set album of every track of playlist 1 to \"A\" // album of track 3 of playlist 1"_qs, u"\"A\""_qs},
       {u"set p to (make new user playlist with properties {name:\"New\"}) // "
        u"repeat with t in (get tracks of playlist 1) // duplicate t to p // end repeat // count of tracks of p"_qs,
        u"3"_qs},
       {u"delete (every track of playlist 1 whose name is not \"Two\") // name of every track of playlist 1"_qs,
        u"{\"Two\"}"_qs},
       {u"set d to current date // set played date of track 1 of playlist 1 to d // "
        u"return (played date of track 1 of playlist 1) = d"_qs,
        u"true"_qs},
       {u"refresh track 1 of playlist 1 // result"_qs, u"-2753 [result]"_qs}});
}

TEST_F(EvalThings, AWalkOverThingsGoesByPositionAndSkipsWhatMovesUp) {
  checkTold(
      {{u"repeat with t in tracks of playlist 1 // delete t // end repeat // name of tracks of playlist 1"_qs,
        u"{\"Two\"}"_qs},
       {u"repeat with t in (get tracks of playlist 1) // delete t // end repeat // count of tracks of playlist 1"_qs,
        u"0"_qs}});
}

TEST_F(EvalThings, HandlersOfTheScriptNeedMyInsideATell) {
  const QString handler = u" // on f(x) // return x & \"!\" // end f"_qs;
  check({{u"tell application \"Toy Music\" // set v to my f(version) // end tell // return v"_qs + handler,
          u"\"1.2!\""_qs},
         {u"tell application \"Toy Music\" // f(1) // end tell"_qs + handler, u"-1708 [f(1)]"_qs},
         {u"return f(1, 2)"_qs + handler, u"-1701 [f(1, 2)]"_qs},
         {u"if application \"Toy Music\" is running then tell application \"Toy Music\" to quit // "
          u"return application \"Toy Music\" is not running"_qs,
          u"true"_qs},
         {u"tell application \"Toy Music\" // quit // version // end tell"_qs, u"-600 [version]"_qs},
         {u"tell application id \"toy.music\" to version"_qs, u"\"1.2\""_qs}});
}

}  // namespace
