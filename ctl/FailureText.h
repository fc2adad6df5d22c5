#pragma once

#include "platform/ScriptHost.h"

/// How a script failed, in a line fit for a terminal: "error -1728: Can't get ...".
QString textOf(const ScriptFailure &failure);
