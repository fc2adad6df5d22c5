#pragma once

#include <string>

/// Starts the application at a path: an executable file by itself, a folder (a bundle) by the system's tool
/// that opens it. The application has a session of its own, no connection to this process's streams, and no
/// arguments. True once it runs; otherwise `error` says why it does not, and nothing is left running.
[[nodiscard]] bool startDetached(const std::string &path, std::string *error);
