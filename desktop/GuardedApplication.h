#pragma once

#include <QApplication>
#include <exception>

/// The application object. An exception that escapes an event handler ends the event loop and is kept, so
/// that it reaches the caller of `run` instead of being lost inside the toolkit.
class GuardedApplication : public QApplication {
 public:
  GuardedApplication(int &count, char **arguments);

  /// Runs the event loop, and answers its exit code; throws on what escaped from it.
  int run();
  bool notify(QObject *receiver, QEvent *event) override;

 private:
  std::exception_ptr escaped;
};

/// What an exception says of itself.
QString describeException(const std::exception_ptr &exception);
/// The calls that lead here, a line each.
QStringList callStackSymbols();
