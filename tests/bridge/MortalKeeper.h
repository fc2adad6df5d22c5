#pragma once

#include "tests/fixtures/KeeperHost.h"

/// A second application on a keeper's library, which dies before a change that the test names, refuses to
/// copy what the test names, and is slow. From its death on it obeys nothing, until it is revived.
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

  /// Its scripts' switch, and whether it has ever copied while that was off.
  bool hasFixedIndexing() { return application.property(u"fixed indexing"_qs).boolean(); }
  bool hasCopiedUnfixed = false;

  /// The persistent IDs of tracks that cannot be copied, and the error that this gives: kCannotSet for each,
  /// another one for lists that hold one.
  QStringList uncopyable;
  qint64 refusal = scriptErrors::kCannotSet;
  bool reversesNextCopy = false;
  /// Deletes, but too late for the script to see; answers nothing in time.
  bool deletesLate = false, isStuck = false;

 private:
  static constexpr int kImmortal = 1 << 30;

  class Application : public KeeperApplication {
   public:
    Application(LibraryStore &store, MortalKeeper &keeper) : KeeperApplication(store), owner(keeper) {}

    ScriptValue perform(const ScriptCommand &command) override {
      if (owner.isDead() || --owner.changesLeft < 0)
        throw ScriptError{scriptErrors::kConnectionInvalid, u"Connection is invalid."_qs, {}};
      if (owner.isStuck) throwTimeOut();
      if (command.verb == u"duplicate") return copied(command);
      const ScriptValue reply = KeeperApplication::perform(command);
      if (owner.deletesLate && command.verb == u"delete") throwTimeOut();
      return reply;
    }
    ScriptObjectPtr elementAt(const QString &className, qsizetype index) override {
      if (owner.isStuck) throwTimeOut();
      return KeeperApplication::elementAt(className, index);
    }
    ScriptObjects elements(const QString &className) override {
      if (owner.isStuck) throwTimeOut();
      return KeeperApplication::elements(className);
    }
    std::optional<ScriptObjects> elementsWhere(const QString &className, const QString &property,
                                               const ScriptValue &value) override {
      if (owner.isStuck) throwTimeOut();
      return KeeperApplication::elementsWhere(className, property, value);
    }

   private:
    [[noreturn]] static void throwTimeOut() {
      throw ScriptError{scriptErrors::kTimedOut, u"It took too long."_qs, {}};
    }
    ScriptValue copied(ScriptCommand command) {
      const bool isList = command.direct.is(ScriptValue::Type::List);
      if (!owner.hasFixedIndexing()) owner.hasCopiedUnfixed = true;
      if (isList || owner.refusal == scriptErrors::kCannotSet) refuse(command.direct);
      if (isList && std::exchange(owner.reversesNextCopy, false)) {
        const auto &items = command.direct.items();
        command.direct = ScriptValue::list({items.rbegin(), items.rend()});
      }
      return KeeperApplication::perform(command);
    }
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
