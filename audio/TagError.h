#pragma once

#include <stdexcept>
#include <string>

/// What makes a file's tag unreadable. Thrown by the parsers, caught by the constructor functions of the
/// tags: such a file has no tag.
class TagError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};
