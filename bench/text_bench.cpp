#include <benchmark/benchmark.h>

#include "platform/Platform.h"
#include "platform/qt/IcuUnicode.h"
#include "text/Metaphone.h"
#include "text/Simplified.h"

namespace {

IcuUnicode unicode;

const QStringList kAscii = {QStringLiteral("The Beatles"),
                            QStringLiteral("Sgt. Pepper's Lonely Hearts Club Band"),
                            QStringLiteral("Simon & Garfunkel"),
                            QStringLiteral("Symphony No. 5 in C Minor, Pt. 2"),
                            QStringLiteral("Queen"),
                            QStringLiteral("Live at the Royal Albert Hall"),
                            QStringLiteral("Guns N' Roses feat. Somebody"),
                            QStringLiteral("Is This It (Remastered)")};
const QStringList kLatin = {QStringLiteral("Björk"), QStringLiteral("Sigur Rós – Ágætis byrjun"),
                            QStringLiteral("Beyoncé Knowles"), QStringLiteral("Mötley Crüe")};
const QStringList kCyrillic = {QStringLiteral("Виктор Цой"), QStringLiteral("Группа крови"),
                               QStringLiteral("Звезда по имени Солнце")};
const QStringList kOther = {QStringLiteral("中島みゆき"), QStringLiteral("방탄소년단 봄날"),
                            QStringLiteral("Γιάννης")};

/// Sixty keys as a real table has them.
Dictionary simplifiers() {
  static const QStringList words = {
      QStringLiteral("one"),  QStringLiteral("two"),    QStringLiteral("three"),  QStringLiteral("four"),
      QStringLiteral("five"), QStringLiteral("six"),    QStringLiteral("seven"),  QStringLiteral("eight"),
      QStringLiteral("nine"), QStringLiteral("ten"),    QStringLiteral("part"),   QStringLiteral("volume"),
      QStringLiteral("feat"), QStringLiteral("feat."),  QStringLiteral("ft."),    QStringLiteral("featuring"),
      QStringLiteral("vs"),   QStringLiteral("versus"), QStringLiteral("number"), QStringLiteral("no.")};
  const Dictionary table = Dictionary::make();
  for (int i = 0; i < words.size(); ++i) {
    table.set(Key(u' ' + words[i] + u' '), Value(QStringLiteral(" %1 ").arg(i + 1)));
    table.set(Key(u' ' + words[i] + QStringLiteral(", ")), Value(QStringLiteral(" %1 ").arg(i + 1)));
    table.set(Key(u'(' + words[i] + u' '), Value(QStringLiteral(" %1 ").arg(i + 1)));
  }
  table.set(Key(u"&"), Value(QStringLiteral(" and ")));
  table.set(Key(u" n' "), Value(QStringLiteral(" and ")));
  return table;
}

void usePlatform() {
  Platform services;
  services.unicode = &unicode;
  setPlatform(services);
}

void simplifyNames(benchmark::State &state, const QStringList &names) {
  usePlatform();
  setSimplifiersDictionaryRemoveTrailingS(simplifiers(), true);
  for (auto _ : state)
    for (const QString &name : names) benchmark::DoNotOptimize(simplified(name));
  state.SetItemsProcessed(state.iterations() * names.size());
}

/// Every text new, so that no memory answers: a number stands behind each name.
void simplifyNewNames(benchmark::State &state, const QStringList &names) {
  usePlatform();
  setSimplifiersDictionaryRemoveTrailingS(simplifiers(), true);
  qint64 number = 0;
  for (auto _ : state)
    for (const QString &name : names) benchmark::DoNotOptimize(simplified(name + QString::number(++number)));
  state.SetItemsProcessed(state.iterations() * names.size());
}

void transliterateNames(benchmark::State &state, const QStringList &names) {
  for (auto _ : state)
    for (const QString &name : names) benchmark::DoNotOptimize(unicode.foldedByTransliteration(name));
  state.SetItemsProcessed(state.iterations() * names.size());
}

void soundKeys(benchmark::State &state, const QStringList &names) {
  usePlatform();
  for (auto _ : state)
    for (const QString &name : names) benchmark::DoNotOptimize(metaphoneNoMinorWords(name));
  state.SetItemsProcessed(state.iterations() * names.size());
}

/// One word each: what the names' words cost without the search for minor words.
void soundKeysOfWords(benchmark::State &state, const QStringList &names) {
  usePlatform();
  const QStringList words = names.join(u' ').split(u' ');
  for (auto _ : state)
    for (const QString &word : words) benchmark::DoNotOptimize(metaphoneWord(word));
  state.SetItemsProcessed(state.iterations() * words.size());
}

BENCHMARK_CAPTURE(simplifyNames, ascii, kAscii);
BENCHMARK_CAPTURE(simplifyNames, accentedLatin, kLatin);
BENCHMARK_CAPTURE(transliterateNames, accentedLatin, kLatin);
BENCHMARK_CAPTURE(simplifyNames, cyrillic, kCyrillic);
BENCHMARK_CAPTURE(transliterateNames, cyrillic, kCyrillic);
BENCHMARK_CAPTURE(simplifyNames, otherScripts, kOther);
BENCHMARK_CAPTURE(simplifyNewNames, otherScriptsNew, kOther);
BENCHMARK_CAPTURE(transliterateNames, otherScripts, kOther);
BENCHMARK_CAPTURE(soundKeys, ascii, kAscii);
BENCHMARK_CAPTURE(soundKeysOfWords, ascii, kAscii);
BENCHMARK_CAPTURE(soundKeys, accentedLatin, kLatin);
BENCHMARK_CAPTURE(soundKeys, cyrillic, kCyrillic);

}  // namespace

BENCHMARK_MAIN();
