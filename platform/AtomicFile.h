#pragma once

#include <QByteArrayView>
#include <QString>

/// Replaces a file whole: written under a temporary name in the same folder, checked, renamed. A link is
/// followed, an existing file keeps its permissions. With `durable` the file and the folder's entry have
/// reached the disk at the end. On failure the old file stands untouched, nothing new is left behind, and
/// `error` (may be null) says what, where and why. Any thread; two writers of one path do not mix.
[[nodiscard]] bool writeFileAtomically(const QString &path, QByteArrayView bytes, bool durable,
                                       QString *error);
