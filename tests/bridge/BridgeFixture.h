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
  class Session : public RecordingWorkspace {
   public:
    using RecordingWorkspace::RecordingWorkspace;
    std::vector<RunningApplication> runningApplications() const override {
      ++asked;
      return running;
    }
    std::vector<RunningApplication> running;
    mutable int asked = 0;
  };

  BridgeTest() : session(folder(u"home/Trash"_qs)) {
    services.scriptHost = &host;
    services.workspace = &session;
    setPlatform(services);
    setRunning(true);
  }
  ~BridgeTest() override {
    // Threads that hang on the host end before it.
    resetBridge();
    if (HasFailure()) std::cerr << "The log:\n" << logText().toStdString() << std::endl;
  }

  void setRunning(bool isRunning) {
    session.running.clear();
    session.running.push_back({u"org.example.Other"_qs, u"Other"_qs});
    if (isRunning) session.running.push_back({u"com.brinmoor.keeper"_qs, u"Music Keeper"_qs});
    iTunesInterface::resetIsMusicAppRunning();
  }
  double seconds() const { return time.now().seconds; }

  ScriptedHost host;
  Session session;
};
