// Any bytes as what comes over the keeper's socket: cut the same whatever pieces they come in, and what is
// taken for a request, an outcome or a status says the same once it is written and read again.

#include "fuzz/Require.h"
#include "platform/keeper/KeeperProtocol.h"
#include "platform/keeper/MessageReader.h"
#include "platform/keeper/OutcomeJson.h"

using namespace keeperProtocol;

namespace {

std::vector<QByteArray> messagesOf(const QByteArray &stream, qsizetype piece, bool *sound) {
  MessageReader reader;
  std::vector<QByteArray> messages;
  *sound = true;
  for (qsizetype at = 0; at < stream.size() && *sound; at += piece) {
    *sound = reader.feed(stream.constData() + at, qMin(piece, stream.size() - at));
    while (const auto message = reader.next()) messages.push_back(*message);
  }
  return messages;
}

void checkTexts(const QByteArray &text) {
  if (const auto request = decodeRequest(text, nullptr)) {
    const QByteArray again = encodeRequest(*request);
    require(encodeRequest(*decodeRequest(again, nullptr)) == again);
  }
  if (const auto outcome = decodeOutcome(text)) {
    const QByteArray again = encodeOutcome(*outcome);
    require(again.size() <= kMostBytes);
    require(encodeOutcome(*decodeOutcome(again)) == again);
    require(!(outcome->result && outcome->failure));
  }
  if (const auto status = decodeStatus(text)) {
    const QByteArray again = encodeStatus(*status);
    require(encodeStatus(*decodeStatus(again)) == again);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, size_t size) {
  silence();
  const QByteArray data(reinterpret_cast<const char *>(bytes), qsizetype(size));
  bool soundWhole = true, soundPieces = true;
  const std::vector<QByteArray> whole = messagesOf(data, qMax<qsizetype>(data.size(), 1), &soundWhole);
  const std::vector<QByteArray> pieces = messagesOf(data, 3, &soundPieces);
  require(whole == pieces);
  for (const QByteArray &message : whole) checkTexts(message);
  checkTexts(data);
  return 0;
}
