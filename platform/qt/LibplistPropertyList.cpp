#include "platform/qt/LibplistPropertyList.h"

#include <plist/plist.h>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <cmath>
#include <cstdlib>
#include <memory>

#include "platform/qt/LibplistTree.h"
#include "platform/qt/PropertyListGuard.h"

namespace {

Value refuse(const QString &reason, QString *error) {
  if (error) *error = u"not a readable property list: "_qs + reason;
  return {};
}

/// libplist's tree is many times the size of its text and lies below our values: without this the allocator
/// would keep its pages for the life of the process.
void giveBackMemory() {
#if defined(__GLIBC__)
  malloc_trim(0);
#endif
}

}  // namespace

Value LibplistPropertyList::parse(QByteArrayView bytes, QString *error) const {
  const bool binary = bytes.startsWith("bplist");
  if (bytes.size() >= qsizetype(std::numeric_limits<quint32>::max())) {
    return refuse(QStringLiteral("4 GB or more"), error);
  }
  const QString reason =
      binary ? reasonToRefuseBinary(bytes, kDeepest, kUnfoldedPerByte) : reasonToRefuseXml(bytes, kDeepest);
  if (!reason.isEmpty()) return refuse(reason, error);
  plist_t tree = nullptr;
  if (binary) {
    plist_from_bin(bytes.data(), quint32(bytes.size()), &tree);
  } else {
    plist_from_xml(bytes.data(), quint32(bytes.size()), &tree);
  }
  if (!tree) return refuse(binary ? QStringLiteral("bad binary form") : QStringLiteral("bad XML"), error);
  Value root = valueOfTree(tree);
  plist_free(tree);
  giveBackMemory();
  return root;
}

QByteArray LibplistPropertyList::write(const Value &root, Format format, QString *error) const {
  QString reason;
  const std::unique_ptr<void, decltype(&plist_free)> tree(treeOfValue(root, kDeepest, &reason), plist_free);
  char *bytes = nullptr;
  uint32_t length = 0;
  if (tree && format == Format::Xml) plist_to_xml(tree.get(), &bytes, &length);
  if (tree && format == Format::Binary) plist_to_bin(tree.get(), &bytes, &length);
  if (bytes) {
    const QByteArray result(bytes, qsizetype(length));
    std::free(bytes);
    return result;
  }
  if (error) {
    *error = u"cannot be written as a property list: "_qs +
             (reason.isEmpty() ? QStringLiteral("out of memory") : reason);
  }
  return {};
}
