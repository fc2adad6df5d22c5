#pragma once

#include <QStringList>

#include "app/state/ProblemView.h"

/// An alert whose title and buttons are texts of the string table; the message is ready.
Alert localizedAlert(const QString &titleKey, const QString &message, const QStringList &buttonKeys,
                     bool critical = false);
