#include "tests/keeper/script/EvalHarness.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class EvalValues : public EvalHarness {};

TEST_F(EvalValues, NumbersGoFromWholeToRealWhereTheLanguageDoes) {
  check({{u"7 div 2"_qs, u"3"_qs},
         {u"-7 div 2"_qs, u"-3"_qs},
         {u"-7 mod 3"_qs, u"-1"_qs},
         {u"7.5 mod 2"_qs, u"1.5"_qs},
         {u"6 / 3"_qs, u"2"_qs},
         {u"(6 / 3) as text"_qs, u"\"2.0\""_qs},
         {u"2 ^ 3 as text"_qs, u"\"8.0\""_qs},
         {u"536870911 + 0 as text"_qs, u"\"536870911\""_qs},
         {u"(536870911 + 1) as text"_qs, u"\"5.36870912E+8\""_qs},
         {u"-(3 - 5)"_qs, u"2"_qs},
         {u"1 / 0"_qs, u"-2701 [1 / 0]"_qs},
         {u"5 mod 0"_qs, u"-2701 [5 mod 0]"_qs},
         {u"1.0E+300 * 1.0E+300"_qs, u"-2702 [1.0E+300 * 1.0E+300]"_qs},
         {u"\"3\" + 4"_qs, u"7"_qs},
         {u"\"x\" + 4"_qs, u"-1700 [\"x\" + 4]"_qs},
         {u"round 2.5"_qs, u"2"_qs},
         {u"round 2.5 rounding up"_qs, u"3"_qs},
         {u"round -2.5 rounding as taught in school"_qs, u"-3"_qs}});
}

TEST_F(EvalValues, CoercionsGiveTheirClassOrSayThatTheyCannot) {
  check({{u"\"12\" as integer"_qs, u"12"_qs},
         {u"\"1.6\" as integer"_qs, u"2"_qs},
         {u"true as integer"_qs, u"1"_qs},
         {u"\"abc\" as integer"_qs, u"-1700 [\"abc\" as integer]"_qs},
         {u"set x to \"abc\" // return x as real"_qs, u"-1700 [x as real]"_qs},
         {u"9999.5 as text"_qs, u"\"9999.5\""_qs},
         {u"10000.0 as text"_qs, u"\"1.0E+4\""_qs},
         {u"12345.678 as text"_qs, u"\"1.2345678E+4\""_qs},
         {u"0.00001 as text"_qs, u"\"1.0E-5\""_qs},
         {u"{1, \"b\", true} as text"_qs, u"\"1btrue\""_qs},
         {u"{} as text"_qs, u"\"\""_qs},
         {u"missing value as text"_qs, u"\"missing value\""_qs},
         {u"monday as text"_qs, u"\"Monday\""_qs},
         {u"may as integer"_qs, u"5"_qs},
         {u"(class of \"a\") as text"_qs, u"\"text\""_qs},
         {u"5 as list"_qs, u"{5}"_qs},
         {u"{5} as integer"_qs, u"5"_qs},
         {u"\"true\" as boolean"_qs, u"true"_qs},
         {u"POSIX path of (POSIX file \"/a/b\")"_qs, u"\"/a/b\""_qs},
         {u"POSIX path of ((POSIX file \"/\") as alias)"_qs, u"\"/\""_qs},
         {u"POSIX path of file ((POSIX file \"/a:b/c\") as text)"_qs, u"\"/a:b/c\""_qs},
         {u"(POSIX file \"/no such\") as alias"_qs, u"-43 [(POSIX file \"/no such\") as alias]"_qs},
         {u"«data utxt00480069» as Unicode text"_qs, u"\"Hi\""_qs}});
}

TEST_F(EvalValues, ComparisonsCoerceTheRightSideOnlyForOrderAndContainment) {
  check({{u"\"3\" = 3"_qs, u"false"_qs},
         {u"3 = 3.0"_qs, u"true"_qs},
         {u"\"Ä b\" = \"ä B\""_qs, u"true"_qs},
         {u"\"é\" = \"e\""_qs, u"false"_qs},
         {u"considering case // \"a\" = \"A\" // end considering"_qs, u"false"_qs},
         {u"ignoring diacriticals // \"é\" = \"e\" // end ignoring"_qs, u"true"_qs},
         {u"\"10\" < 9"_qs, u"true"_qs},
         {u"10 < \"9\""_qs, u"false"_qs},
         {u"missing value < 3"_qs, u"-1700 [missing value < 3]"_qs},
         {u"3 > missing value"_qs, u"-1700 [3 > missing value]"_qs},
         {u"missing value is missing value"_qs, u"true"_qs},
         {u"{1, 2} contains 2"_qs, u"true"_qs},
         {u"{{1}, {2}} contains {2}"_qs, u"false"_qs},
         {u"{1, 2, 3} ends with {2, 3}"_qs, u"true"_qs},
         {u"\"Abc\" starts with \"aB\""_qs, u"true"_qs},
         {u"\"b\" is in \"abc\""_qs, u"true"_qs},
         {u"\"x\" is not in {\"a\"}"_qs, u"true"_qs},
         {u"{a:1, b:2} contains {b:2}"_qs, u"true"_qs},
         {u"{a:1, b:2} = {b:2, a:1}"_qs, u"true"_qs},
         {u"false and (1 / 0 = 1)"_qs, u"false"_qs},
         {u"true and 1"_qs, u"true"_qs},
         {u"if missing value then 1"_qs, u"-1700 [missing value]"_qs}});
}

TEST_F(EvalValues, TheLeftSideDecidesWhatIsJoined) {
  check({{u"\"a\" & 1 & true"_qs, u"\"a1true\""_qs},
         {u"3 & \"x\""_qs, u"{3, \"x\"}"_qs},
         {u"{\"a\"} & \"b\""_qs, u"{\"a\", \"b\"}"_qs},
         {u"n of ({n:1} & {n:2, m:3})"_qs, u"1"_qs},
         {u"set text item delimiters to \"-\" // \"x\" & {1, 2}"_qs, u"\"x1-2\""_qs},
         {u"class of (\"x\" & {n:1}) is list"_qs, u"true"_qs}});
}

TEST_F(EvalValues, TextsComeApartByCharactersWordsParagraphsAndDelimiters) {
  check({{u"length of \"a\U0001F600b\""_qs, u"3"_qs},
         {u"character 2 of \"a\U0001F600b\""_qs, u"\"\U0001F600\""_qs},
         {u"text 2 thru -2 of \"abcde\""_qs, u"\"bcd\""_qs},
         {u"text 3 thru 9 of \"abc\""_qs, u"-1728 [text 3 thru 9 of \"abc\"]"_qs},
         {u"character 4 of \"abc\""_qs, u"-1728 [character 4 of \"abc\"]"_qs},
         {u"words of \"Don't stop, now\""_qs, u"{\"Don't\", \"stop\", \"now\"}"_qs},
         {u"paragraphs of (\"a\" & return & linefeed & \"b\" & linefeed)"_qs, u"{\"a\", \"b\", \"\"}"_qs},
         {u"text of \"abc\""_qs, u"\"abc\""_qs},
         {u"last character of \"abc\""_qs, u"\"c\""_qs},
         {u"characters 2 thru 3 of \"abc\""_qs, u"{\"b\", \"c\"}"_qs},
         {u"set AppleScript's text item delimiters to {\", \", \";\"} // text items of \"a;b, c\""_qs,
          u"{\"a\", \"b\", \"c\"}"_qs},
         {u"text items of \"\""_qs, u"{}"_qs},
         {u"offset of \"C\" in \"\U0001F600abc\""_qs, u"4"_qs},
         {u"considering case // offset of \"C\" in \"abc\" // end considering"_qs, u"0"_qs},
         {u"id of \"A\U0001F600\""_qs, u"{65, 128512}"_qs},
         {u"(string id {128512, 65}) = (\"\U0001F600\" & character id 65)"_qs, u"true"_qs},
         {u"quoted form of \"it's\""_qs, u"\"'it'\\''s'\""_qs},
         {u"count of \"abc\""_qs, u"3"_qs}});
}

TEST_F(EvalValues, ListsAndDatesAreSharedAndCopiesAreNot) {
  check({{u"set a to current date // set b to a // copy a to c // set year of b to 1999 // "
          u"{year of a = 1999, year of c = 1999}"_qs,
          u"{true, false}"_qs},
         {u"set a to {1} // set b to a // set end of b to 2 // a"_qs, u"{1, 2}"_qs},
         {u"set a to {1, {2}} // copy a to b // set end of item 2 of b to 3 // a"_qs, u"{1, {2}}"_qs},
         {u"set L to {1, 2, 3} // set item 2 of L to \"x\" // set beginning of L to 0 // L"_qs,
          u"{0, 1, \"x\", 3}"_qs},
         {u"items 2 thru -1 of {1, 2, 3}"_qs, u"{2, 3}"_qs},
         {u"{rest of {1, 2}, reverse of {1, 2}, last item of {1, 2}, count of {1, 2}}"_qs,
          u"{{2}, {2, 1}, 2, 2}"_qs},
         {u"item 1 of {}"_qs, u"-1728 [item 1 of {}]"_qs},
         {u"item 0 of {1}"_qs, u"-1719 [item 0 of {1}]"_qs},
         {u"set {a, {b}} to {1, {2}} // b"_qs, u"2"_qs},
         {u"set r to {n:1} // set n of r to 5 // n of r"_qs, u"5"_qs},
         {u"set r to {n:1} // x of r"_qs, u"-1728 [x of r]"_qs}});
}

TEST_F(EvalValues, ALoopsVariableIsAReferenceToTheItem) {
  check({{u"repeat with x in {\"a\"} // return x is \"a\" // end repeat"_qs, u"false"_qs},
         {u"repeat with x in {\"a\"} // return contents of x is \"a\" // end repeat"_qs, u"true"_qs},
         {u"set t to \"\" // repeat with x in {1, 2} // set t to t & x // end repeat // t"_qs, u"\"12\""_qs},
         {u"set L to {1, 2} // repeat with x in L // set contents of x to x + 1 // end repeat // L"_qs,
          u"{2, 3}"_qs},
         {u"set L to {1} // set r to a reference to item 1 of L // set item 1 of L to 9 // contents of r"_qs,
          u"9"_qs}});
}

TEST_F(EvalValues, DatesAreReadAndWrittenByTheirParts) {
  const QString made =
      u"set d to current date // set day of d to 1 // set year of d to 2024 // set month of d to 5 // "
      u"set time of d to 3661 // "_qs;
  check(
      {{made + u"(d as «class isot») as text"_qs, u"\"2024-05-01T01:01:01\""_qs},
       {made +
            u"{year of d, (month of d) as text, weekday of d as integer, hours of d, minutes of d, seconds of d}"_qs,
        u"{2024, \"May\", 4, 1, 1, 1}"_qs},
       {made + u"set hours of d to 13 // (d as «class isot») as text"_qs, u"\"2024-05-01T13:01:01\""_qs},
       {made + u"(d + 60) - d"_qs, u"60"_qs},
       {made + u"d < d + 1"_qs, u"true"_qs},
       {made + u"d as text"_qs, u"\"Wednesday, 1 May 2024 at 01:01:01\""_qs},
       {made + u"d < 3"_qs, u"-1700 [d < 3]"_qs}});
}

}  // namespace
