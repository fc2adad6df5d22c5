#pragma once

#include "tests/fixtures/KeeperHost.h"

/// A second application on a keeper's library, which dies before a change that the test names, and refuses to
/// copy what the test names. From its death on it obeys nothing, until it is revived.
class MortalKeeper : public ScriptHost {
 public:
  explicit MortalKeeper(KeeperHost &keeper) : application(keeper.store(), *this), interpreter(application) {}

  ScriptOutcome run(const QString &source) override {
    // A dead application cannot be reached at all.
    if (isDead()) return {{}, ScriptFailure{scriptErrors::kApplicationNotRunning, u"gone"_qs, 0, 0}};
    return interpreter.run(source);
  }

  /// It obeys so many changes and dies before the next.
  void dieAfter(int changes) { changesLeft = changes; }
  void revive() { changesLeft = kImmortal; }
  bool isDead() const { return changesLeft < 0; }

  /// The persistent IDs of tracks that cannot be copied, and the error that this gives.
  QStringList uncopyable;
  qint64 refusal = scriptErrors::kCannotSet;

 private:
  static constexpr int kImmortal = 1 << 30;

  class Application : public KeeperApplication {
   public:
    Application(LibraryStore &store, MortalKeeper &keeper) : KeeperApplication(store), owner(keeper) {}

    ScriptValue perform(const ScriptCommand &command) override {
      if (owner.isDead() || --owner.changesLeft < 0)
        throw ScriptError{scriptErrors::kConnectionInvalid, u"Connection is invalid."_qs, {}};
      if (command.verb == u"duplicate") refuse(command.direct);
      return KeeperApplication::perform(command);
    }

   private:
    void refuse(const ScriptValue &value) const {
      if (value.is(ScriptValue::Type::List)) {
        for (const ScriptValue &item : value.items()) refuse(item);
      } else if (value.is(ScriptValue::Type::Object) &&
                 owner.uncopyable.contains(value.object()->property(u"persistent id"_qs).text())) {
        throw ScriptError{owner.refusal, u"It cannot be copied."_qs, {}};
      }
    }
    MortalKeeper &owner;
  };

  int changesLeft = kImmortal;
  Application application;
  Interpreter interpreter;
};
