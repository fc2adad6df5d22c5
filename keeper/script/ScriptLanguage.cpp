#include "keeper/script/ScriptLanguage.h"

#include <numbers>

namespace ScriptLanguage {

namespace {

using Function = scriptTree::Builtin::Function;
using Terms = ScriptTermTable<Term>;

void add(Terms &terms, Term::Kind kind, const QString &spelling, const QString &meaning) {
  Term &term = terms[spelling];
  term.kind = kind;
  term.meaning = meaning;
}

void addAll(Terms &terms, Term::Kind kind, const QString &spellings) {
  for (const QString &spelling : spellings.split(u',')) add(terms, kind, spelling, spelling);
}

void addValue(Terms &terms, const QString &spelling, const ScriptValue &value) {
  add(terms, Term::Kind::Value, spelling, spelling);
  terms[spelling].value = value;
}

void addFunction(Terms &terms, const QString &spelling, Function function) {
  add(terms, Term::Kind::Function, spelling, spelling);
  terms[spelling].function = function;
}

void addClasses(Terms &terms) {
  addAll(terms, Term::Kind::Class,
         QStringLiteral("text,integer,real,number,boolean,list,record,date,item,character,word,paragraph,"
                        "text item,application"));
  add(terms, Term::Kind::Class, QStringLiteral("string"), QStringLiteral("text"));
  add(terms, Term::Kind::Class, QStringLiteral("unicode text"), QStringLiteral("text"));
  for (const char16_t *singular : {u"item", u"character", u"word", u"paragraph", u"text item"}) {
    const QString term = QString::fromUtf16(singular);
    add(terms, Term::Kind::Plural, term + u's', term);
  }
}

void addValues(Terms &terms) {
  addValue(terms, QStringLiteral("true"), true);
  addValue(terms, QStringLiteral("false"), false);
  addValue(terms, QStringLiteral("missing value"), ScriptValue::missing());
  addValue(terms, QStringLiteral("return"), QStringLiteral("\r"));
  addValue(terms, QStringLiteral("linefeed"), QStringLiteral("\n"));
  addValue(terms, QStringLiteral("tab"), QStringLiteral("\t"));
  addValue(terms, QStringLiteral("space"), QStringLiteral(" "));
  addValue(terms, QStringLiteral("quote"), QStringLiteral("\""));
  addValue(terms, QStringLiteral("pi"), std::numbers::pi);
  const QString constants = QStringLiteral(
      "null,monday,tuesday,wednesday,thursday,friday,saturday,sunday,january,february,march,april,may,june,"
      "july,august,september,october,november,december");
  for (const QString &constant : constants.split(u',')) addValue(terms, constant, ScriptConstant{constant});
}

void addFunctions(Terms &terms) {
  addFunction(terms, QStringLiteral("current date"), Function::CurrentDate);
  addFunction(terms, QStringLiteral("delay"), Function::Delay);
  addFunction(terms, QStringLiteral("offset"), Function::Offset);
  addFunction(terms, QStringLiteral("posix file"), Function::PosixFile);
  addFunction(terms, QStringLiteral("file"), Function::File);
  addFunction(terms, QStringLiteral("alias"), Function::Alias);
  addFunction(terms, QStringLiteral("round"), Function::Round);
  addFunction(terms, QStringLiteral("load script"), Function::LoadScript);
  addFunction(terms, QStringLiteral("run script"), Function::RunScript);
  addFunction(terms, QStringLiteral("time to gmt"), Function::TimeToGmt);
  addFunction(terms, QStringLiteral("character id"), Function::CharacterId);
  addFunction(terms, QStringLiteral("string id"), Function::StringId);
  addFunction(terms, QStringLiteral("log"), Function::Log);
}

Terms makeTerms() {
  Terms terms;
  addClasses(terms);
  addValues(terms);
  addFunctions(terms);
  addAll(terms, Term::Kind::Property, QStringLiteral("class,text item delimiters,posix path,quoted form"));
  addAll(terms, Term::Kind::Verb, QStringLiteral("activate,launch,quit,run,reopen"));
  return terms;
}

}  // namespace

const ScriptTermTable<Term> &table() {
  static const Terms terms = makeTerms();
  return terms;
}

QString classOfCode(const QString &code) {
  return code == u"utxt" || code == u"TEXT" ? QStringLiteral("text") : QStringLiteral("«class %1»").arg(code);
}

}  // namespace ScriptLanguage
