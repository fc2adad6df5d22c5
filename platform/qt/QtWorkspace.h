#pragma once

#include "platform/Workspace.h"

/// The desktop session as far as Qt knows it.
class QtWorkspace : public Workspace {
 public:
  /// The folder of the user's home trash; empty where the system keeps the trash by itself.
  static QString standardTrash();

  explicit QtWorkspace(const QString &trash = standardTrash()) : homeTrash(trash) {}
  /// The file's name without its ending, for an executable file or an application folder.
  QString displayNameOfApplication(const QString &path) const override;
  QString systemDescription() const override;
  bool recycle(const QString &path, QString *error) override;
  QStringList trashFolders() const override;
  /// This desktop has no music application of its own: none runs, none can be started, nothing is told.
  std::vector<RunningApplication> runningApplications() const override { return {}; }
  bool launchApplication(const QString &) override { return false; }
  Subscription observeApplications(std::function<void(const RunningApplication &)>,
                                   std::function<void(const RunningApplication &)>) override {
    return 0;
  }
  void stopObserving(Subscription) override {}

 private:
  const QString homeTrash;
};
