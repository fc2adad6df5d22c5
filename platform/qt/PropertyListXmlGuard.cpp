#include "platform/qt/PropertyListGuard.h"

namespace {

/// Most tags hold or end a text or a number, which changes nothing here. By their first letters, since there
/// are dozens of them to a track.
bool isPlainTag(QByteArrayView rest) {
  const qsizetype name = rest.startsWith('/') ? 1 : 0;
  if (rest.size() < name + 2) return false;
  switch (rest[name]) {
    case '!':
    case '?':
      return false;
    case 'd':
      return rest[name + 1] != 'i';
    case 'a':
      return rest[name + 1] != 'r';
    default:
      return true;
  }
}

/// True if the tag that begins here is the named container's, whatever follows the name.
bool isTag(QByteArrayView rest, QByteArrayView name) {
  if (!rest.startsWith(name)) return false;
  const char next = rest.size() > name.size() ? rest[name.size()] : '>';
  return next == '>' || next == '/' || quint8(next) <= ' ';
}

/// A container tag that holds nothing. Only the plain spelling counts as that: a tag with attributes is taken
/// as one that opens, so that the count is never too low.
bool isEmptyTag(QByteArrayView rest, qsizetype nameLength) {
  qsizetype at = nameLength;
  while (at < rest.size() && quint8(rest[at]) <= ' ') ++at;
  return rest.sliced(at).startsWith("/>");
}

/// The change of depth that the tag at the front of `rest` (behind its "<") makes.
int depthChange(QByteArrayView rest) {
  const bool closing = rest.startsWith('/');
  const QByteArrayView name = closing ? rest.sliced(1) : rest;
  for (const QByteArrayView container : {QByteArrayView("dict"), QByteArrayView("array")}) {
    if (!isTag(name, container)) continue;
    if (closing) return -1;
    return isEmptyTag(name, container.size()) ? 0 : 1;
  }
  return 0;
}

/// How many bytes behind a "<" are a comment or an instruction; 0 for a tag.
qsizetype commentLength(QByteArrayView rest) {
  const bool comment = rest.startsWith("!--");
  if (!comment && !rest.startsWith('?')) return 0;
  const QByteArrayView ending = comment ? QByteArrayView("-->") : QByteArrayView("?>");
  const qsizetype end = rest.indexOf(ending, comment ? 3 : 1);
  return end < 0 ? rest.size() : end + ending.size();
}

/// Comments that end before they have begun: parsers differ on where these end, and so on what they hide.
bool isAmbiguous(QByteArrayView rest) {
  return rest.startsWith("!-->") || rest.startsWith("!--->") || rest.startsWith("?>");
}

bool hasInternalSubset(QByteArrayView rest) {
  return rest.startsWith("!DOCTYPE") && rest.first(std::max<qsizetype>(0, rest.indexOf('>'))).contains('[');
}

}  // namespace

QString reasonToRefuseXml(QByteArrayView bytes, int deepest) {
  if (bytes.contains('\0')) return QStringLiteral("the text holds NUL bytes");
  if (!bytes.isValidUtf8()) return QStringLiteral("the text is not UTF-8");
  int depth = 0;
  // What stands in a section of raw text may open containers for a parser that does not know the section, but
  // must not close any.
  qsizetype rawEnd = 0;
  for (qsizetype at = bytes.indexOf('<'); at >= 0; at = bytes.indexOf('<', at)) {
    const QByteArrayView rest = bytes.sliced(++at);
    if (isPlainTag(rest)) continue;
    if (isAmbiguous(rest)) return QStringLiteral("a comment without an end of its own");
    if (at >= rawEnd) at += commentLength(rest);
    if (rest.startsWith("![CDATA[")) {
      const qsizetype end = rest.indexOf("]]>");
      rawEnd = end < 0 ? bytes.size() : at + end;
    }
    if (hasInternalSubset(rest)) return QStringLiteral("the document type has declarations of its own");
    const int change = depthChange(rest);
    if (change > 0 || at >= rawEnd) depth = std::max(0, depth + change);
    if (depth > deepest) return QStringLiteral("nested deeper than %1").arg(deepest);
  }
  return {};
}
