#pragma once

#include <QString>

/// What the exception in hand says of itself; "unknown exception" for one of no standard kind. Inside a
/// `catch` alone. Any thread.
QString currentExceptionText();
