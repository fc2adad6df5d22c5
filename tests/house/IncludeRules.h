#pragma once

#include <functional>

#include "tests/house/SourceTree.h"

/// The Qt module that a header in angle brackets belongs to ("QtWidgets"), or nothing.
using ModuleOfHeader = std::function<QString(const QString &header)>;

/// What in a tree goes against the order of the house: an include of a folder below one's own, of an adapter
/// by anything but a program, of one program by another, of a file that is not there, a circle of files, a Qt
/// module outside the folders that may use it. A readable line for each; empty when the house is in order.
QStringList findIncludeFaults(const std::vector<SourceFile> &tree, const ModuleOfHeader &moduleOfHeader);
