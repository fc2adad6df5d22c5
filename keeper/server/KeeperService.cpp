#include "keeper/server/KeeperService.h"
#include "platform/keeper/OutcomeJson.h"

#include <utility>

using namespace keeperProtocol;

namespace {

// A longer request is taken apart on the script thread, so that it holds up no other client.
constexpr qsizetype kShort = 4096;

}  // namespace

KeeperService::KeeperService(KeeperPlace place, KeeperEngine &engine_,
                             std::function<void(const QString &)> onEnd_)
    : engine(engine_),
      onEnd(std::move(onEnd_)),
      server(std::move(place),
             [this](ScriptServer::ClientID client, const QByteArray &message) { received(client, message); }),
      gate([this] { return engine.secure(); }) {}

KeeperService::~KeeperService() {
  stop();
}

bool KeeperService::start(QString *error) {
  scripts.post([this] {
    const QString problem = engine.open();
    if (!problem.isEmpty()) onEnd(problem);
  });
  return server.listen(error);
}

void KeeperService::stop() {
  if (std::exchange(stopped, true)) return;
  server.leave();
  scripts.finish([this] { engine.close(); });
  gate.finish();
  server.close();
}

void KeeperService::received(ScriptServer::ClientID client, const QByteArray &message) {
  const auto decode = [this, client](const QByteArray &text) {
    QString error;
    const auto request = decodeRequest(text, &error);
    if (!request) server.answer(client, encodeOutcome(failed(kHandlerFailed, error)));
    return request;
  };
  if (message.size() > kShort) {
    scripts.post([this, client, message, decode] {
      if (const auto request = decode(message)) perform(client, *request);
    });
  } else if (const auto request = decode(message)) {
    if (std::holds_alternative<StatusRequest>(*request))
      return server.answer(client, encodeStatus(engine.status()));
    scripts.post([this, client, request = *request] { perform(client, request); });
  }
}

void KeeperService::perform(ScriptServer::ClientID client, const Request &request) {
  QByteArray answer;
  if (const auto *script = std::get_if<ScriptRequest>(&request)) {
    answer = encodeOutcome(engine.run(script->source));
  } else if (const auto *import = std::get_if<ImportRequest>(&request)) {
    answer = encodeOutcome(engine.importFile(*import));
  } else if (const auto *to = std::get_if<ExportRequest>(&request)) {
    answer = encodeOutcome(engine.exportFile(*to));
  } else {
    answer = encodeStatus(engine.status());
  }
  const bool quits = engine.wantsToQuit();
  if (!engine.hasUnsecured()) return send(client, answer, quits, {});
  gate.pass([=, this](const QString &problem) { send(client, answer, quits, problem); });
}

void KeeperService::send(ScriptServer::ClientID client, const QByteArray &answer, bool quits,
                         const QString &problem) {
  // A disk that has failed once may claim later to hold what it lost: only a new start sees what it has.
  if (!problem.isEmpty()) {
    server.answer(client, encodeOutcome(failed(kHandlerFailed, problem)));
    return onEnd(problem);
  }
  server.answer(client, answer);
  if (quits) onEnd({});
}
