#pragma once

#include <QString>

/// The file-system path of a "file:" address: its host ignored, cut at "#" and "?", escapes decoded, without
/// a slash at the end. Empty if an escape is bad or the decoded bytes are no UTF-8. An address of another
/// kind gives its path all the same.
QString pathOfFileAddress(const QString &address);

/// The "file://" address of an absolute path, escaped.
QString fileAddressOfPath(const QString &path);
