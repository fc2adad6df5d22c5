#pragma once

#include "keeper/library/KeeperSettings.h"

/// The user's settings of the keeper, from its preference domain; what is not set is as it comes. Any thread.
KeeperSettings readKeeperSettings();
