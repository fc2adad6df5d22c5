#pragma once

#include <QByteArrayView>
#include <optional>

/// True if the pattern occurs as a run in the data. No pattern occurs nowhere, the empty one everywhere.
bool containsData(QByteArrayView data, std::optional<QByteArrayView> pattern);
