#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "platform/ScriptHost.h"

/// What is said on the keeper's socket. A message is its length in four bytes, the highest first, and so many
/// bytes of UTF-8 text, a JSON object; each request is answered by one message, in order.
namespace keeperProtocol {

/// The longest message, without its length.
inline constexpr qsizetype kMostBytes = 16 * 1024 * 1024;
/// How deep lists may lie in one another.
inline constexpr int kDeepest = 250;

/// What the answering side calls a failure of its own, in the language's numbers.
inline constexpr qint64 kNotRunning = -600;
inline constexpr qint64 kConnectionInvalid = -609;
inline constexpr qint64 kHandlerFailed = -10000;
inline constexpr qint64 kCannotLaunch = -10810;

/// Asks to run a script; answered by its outcome.
struct ScriptRequest {
  QString source;
};
/// Asks how the keeper is; answered at once, whatever else it does.
struct StatusRequest {};
/// Asks to import a library file, the fronts of locations replaced as the pairs say; answered by an outcome
/// with the lines to show.
struct ImportRequest {
  QString file;
  std::vector<std::pair<QString, QString>> mapping;
};
/// Asks to write the library as an XML file; answered by an outcome with the lines to show.
struct ExportRequest {
  QString file;
};
/// The pair that a user writes as "OLD=NEW"; nothing without the sign.
std::optional<std::pair<QString, QString>> mappingOfText(const QString &text);
using Request = std::variant<ScriptRequest, StatusRequest, ImportRequest, ExportRequest>;

/// How far an import is.
struct Importing {
  qint64 done = 0;
  /// 0 while it is unknown.
  qint64 total = 0;
  QString file;
};

/// How a keeper is.
struct Status {
  QString version;
  /// The folder of its store.
  QString folder;
  qint64 processID = 0;
  qint64 tracks = 0;
  std::optional<Importing> importing;
  bool playing = false;
  /// Why the import that the keeper began with came to nothing; empty if it did not.
  QString importProblem;
};

/// A message with its length in front. The text is no longer than `kMostBytes`.
QByteArray framed(const QByteArray &text);
/// The length that four bytes say.
quint32 lengthOf(const char *fourBytes);

/// The text of a request; may be longer than a message can be.
QByteArray encodeRequest(const Request &request);
/// Nothing for what is no request, with what is wrong in `error` (may be null).
std::optional<Request> decodeRequest(const QByteArray &text, QString *error);

QByteArray encodeStatus(const Status &status);
/// Nothing for what is no status.
std::optional<Status> decodeStatus(const QByteArray &text);

/// The outcome of a failure.
ScriptOutcome failed(qint64 number, const QString &message);

}  // namespace keeperProtocol
