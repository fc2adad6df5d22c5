#include "app/state/UntrustedLocations.h"

#include "app/state/AppState.h"
#include "support/BMLog.h"
#include "support/Preferences.h"

Array UntrustedLocations::untrustedLocationPIDsArray() {
  const std::lock_guard held(guard);
  if (!mUntrustedLocationPIDsArray.isNull()) return mUntrustedLocationPIDsArray;
  const Value stored = prefs::value(prefs::untrustedPIDs_3);
  const bool isList = stored.type() == Value::Type::Array;
  if (!isList && !stored.isNull()) BMLog("!! the preference %@ is no list", prefs::untrustedPIDs_3);
  mUntrustedLocationPIDsArray = isList ? stored.toArray().copyMembers(true) : Array::make();
  return mUntrustedLocationPIDsArray;
}

void UntrustedLocations::writeUntrustedLocationPIDsArray() {
  Array list;
  {
    const std::lock_guard held(guard);
    list = mUntrustedLocationPIDsArray;
  }
  if (list.isNull()) return;
  const ObjectLock lock = state.threadLockForObject(list);
  const std::lock_guard held(*lock);
  prefs::set(prefs::untrustedPIDs_3, list.isEmpty() ? Value() : Value(list));
}
