#include "platform/Platform.h"

namespace {
Platform current;
}

const Platform &platform() {
  return current;
}

void setPlatform(const Platform &services) {
  current = services;
}
