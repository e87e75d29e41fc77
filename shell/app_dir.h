// Where the program lives: the directory that holds the executable and its data files.
#pragma once

#include <QString>

namespace tallyon {

// The directory of the running executable, symlinks resolved, always ending in "/".
// Needs a QCoreApplication; falls back to /proc/self/exe, then to the current directory.
QString ApplicationDir();

} // namespace tallyon
