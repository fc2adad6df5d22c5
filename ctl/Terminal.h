#pragma once

#include <QString>
#include <istream>
#include <ostream>

/// Where a command reads and writes: results to `out`, messages and progress to `err`. The streams outlive
/// it.
struct Terminal {
  std::istream &in;
  std::ostream &out;
  std::ostream &err;
  /// A person watches `err`, so progress may be drawn there.
  bool errIsTerminal = false;
  /// A person answers on `in`.
  bool inIsTerminal = false;

  /// Writes a line of a result.
  void print(const QString &line) { out << line.toStdString() << '\n'; }
  /// Writes a line for the user: "tallyfenctl: <message>".
  void say(const QString &message) { err << "tallyfenctl: " << message.toStdString() << '\n'; }
};

/// Asks a person on the terminal; anything but "y" or "yes" is a no, the end of the input too.
[[nodiscard]] bool agrees(const QString &question, Terminal &terminal);

/// The text as it may be shown on a terminal: control characters, which could steer it, become U+FFFD.
QString printable(QString text);
