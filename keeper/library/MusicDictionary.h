#pragma once

#include "keeper/script/ScriptDictionary.h"

/// The words of the music application: its classes, properties, constants and commands, as scripts written
/// for any music application of this family know them. Made at the first call, then only read; any thread.
const ScriptDictionary &musicDictionary();
