// Any bytes as a property list: an answer or an error text, the same twice, and a tree that can be copied,
// compared, walked and destroyed.

#include <cstdlib>

#include "app/library/PropertyListPass.h"
#include "support/Format.h"

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, size_t size) {
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
  const QByteArrayView data(bytes, qsizetype(size));
  PropertyListPass first(data), second(data);
  const Value root = first.read();
  require(isEqual(root, second.read()));
  require(first.error() == second.error());
  require(first.counts().undecodable <= first.counts().values);
  require(isEqual(copyTree(root), root));
  description(root);
  return 0;
}
