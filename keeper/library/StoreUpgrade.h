#pragma once

#include <QString>
#include <functional>
#include <span>

class StoreDatabase;

/// One step from a version of the store to the next. Runs inside a transaction; throws `StoreError`.
struct StoreUpgradeStep {
  int from = 0;
  std::function<void(StoreDatabase &)> run;
};

/// The steps that lead from every older version to the present one.
std::span<const StoreUpgradeStep> storeUpgradeSteps();

/// Brings a store from its version to `target`: before each step a whole copy of the store is kept beside it
/// as "Music Library (version N).musiclibrary" (numbered if there is such a file), then the step and its
/// version are one transaction. Throws `StoreError` when a step is missing or fails; the store is then as
/// that step found it.
void upgradeStore(StoreDatabase &database, int target, std::span<const StoreUpgradeStep> steps);

/// A path that is not in use yet: the base and the extension, or both with " 2", " 3"... between them.
QString freePath(const QString &base, const QString &extension);
