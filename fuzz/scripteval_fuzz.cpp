// Any script text against a small library: no crash, no hang, no memory without end, whatever it says.

#include <cstddef>
#include <cstdint>

#include "keeper/script/Interpreter.h"
#include "platform/Platform.h"
#include "tests/keeper/script/ToyLibrary.h"

namespace {

/// Time stands still, and nobody waits.
class StillClock : public Clock {
 public:
  Date now() const override { return {}; }
  void sleep(double) override {}
};

/// Nothing changes, and nothing is known.
class NoFileFacts : public FileFacts {
 public:
  Dictionary metadata(const QString &) const override { return Dictionary(); }
  std::optional<Date> modificationDate(const QString &) const override { return std::nullopt; }
  QString typeCode(const QString &) const override { return {}; }
  bool isPackage(const QString &) const override { return false; }
  std::optional<qint64> fileSize(const QString &) const override { return std::nullopt; }
  qint64 freeBytes(const QString &) const override { return 0; }
};

void setUp() {
  static StillClock clock;
  static NoFileFacts fileFacts;
  Platform services;
  services.clock = &clock;
  services.fileFacts = &fileFacts;
  setPlatform(services);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size) {
  static const bool ready = (setUp(), true);
  (void)ready;
  ScriptLimits limits;
  limits.depth = 64;
  limits.steps = 20'000;
  limits.memory = 16 * 1024 * 1024;
  ToyLibrary library;
  Interpreter interpreter(library, limits);
  const QString text = QString::fromUtf8(reinterpret_cast<const char *>(bytes), qsizetype(size));
  const QString told = QStringLiteral("tell application \"Toy Music\"\n%1\nend tell").arg(text);
  for (const QString &source : {text, told}) {
    const ScriptOutcome outcome = interpreter.run(source);
    if (outcome.result.has_value() == outcome.failure.has_value()) __builtin_trap();
    if (!outcome.failure) continue;
    const bool isInside = outcome.failure->rangeStart >= 0 && outcome.failure->rangeLength >= 0 &&
                          outcome.failure->rangeStart + outcome.failure->rangeLength <= source.size();
    if (!isInside) __builtin_trap();
  }
  return 0;
}
