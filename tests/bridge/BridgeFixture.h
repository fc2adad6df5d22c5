#pragma once

#include <iostream>

#include "bridge/BridgeState.h"
#include "bridge/iTunesInterface.h"
#include "platform/qt/QtWorkspace.h"
#include "tests/bridge/ScriptedHost.h"
#include "tests/fixtures/RecordingWorkspace.h"
#include "tests/fixtures/TestPlatform.h"

/// Tests of the bridge with an application that is scripted and that runs or not.
class BridgeTest : public TestPlatform {
 protected:
  BridgeTest() {
    services.scriptHost = &host;
    setPlatform(services);
    setRunning(true);
  }
  ~BridgeTest() override {
    // Threads that hang on the host end before it.
    resetBridge();
    if (HasFailure()) std::cerr << "The log:\n" << logText().toStdString() << std::endl;
  }

  void setRunning(bool isRunning) {
    session.running = {{u"org.example.Other"_qs, u"Other"_qs}};
    if (isRunning) session.running.push_back(RecordingWorkspace::musicApplication());
    iTunesInterface::resetIsMusicAppRunning();
  }
  double seconds() const { return time.now().seconds; }

  ScriptedHost host;
  RecordingWorkspace &session = *workspace;
};
