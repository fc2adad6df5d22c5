#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>
