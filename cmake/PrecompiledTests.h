#pragma once

#include <gtest/gtest.h>

#include "cmake/Precompiled.h"
