#pragma once

/// True if the process at the other end of a connected local socket runs as this process' user.
bool isPeerThisUser(int socketHandle);
