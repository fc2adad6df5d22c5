#pragma once

#include <QByteArray>
#include <QList>

/// The frames that the system knows by name. Any thread.
namespace frameids {

/// Those with a parsed form: old id, then new id.
const QList<QByteArray> &internalRecognizedFrameIDs();
/// These, and those that the music application understands.
const QList<QByteArray> &iTunesRecognizedFrameIDs();
/// Those that no tag should hold: none is known.
const QList<QByteArray> &dangerousFrameIDs();

/// The id that stands behind this one in the lists: for the three letters of version 2.2 the four of version
/// 2.3. An unknown id comes back as it is.
QByteArray frameIDUpgrade(const QByteArray &id);

/// The name under which a tag keeps its pictures, whatever their frames were called.
inline constexpr QByteArrayView kImage = "[image]";

}  // namespace frameids
