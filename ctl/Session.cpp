#include "ctl/Session.h"

#include "support/BMLog.h"
#include "support/PreferenceKeys.h"

Session::Session(LogAtEnd end)
    : logAtEnd(end), outer(platform()), overlay(outer.preferences, {prefs::noSystemDeserialize}) {
  Platform inner = outer;
  inner.preferences = &overlay;
  setPlatform(inner);
}

Session::~Session() {
  BMLogFlushFinal(logAtEnd == LogAtEnd::Compressed);
  setPlatform(outer);
}

void Session::useUserSettings() {
  setPlatform(outer);
}
