// Where the program lives: the directory that holds the executable and its data files.
#pragma once

#include <QString>

namespace tallyon {

// The directory of the running executable, symlinks resolved, always ending in "/".
// Needs a QCoreApplication; falls back to /proc/self/exe, then to the current directory.
QString ApplicationDir();

// Where tallyon.cfg and the printed PDF go, ending in "/": appDir itself when it can be
// written to (a build folder, a prefix of the player's own); otherwise, as for a system-wide
// install, the "tallyon" folder of the user's configuration folder ($XDG_CONFIG_HOME, or
// ~/.config), made when missing. A folder marked read-only counts as not writable even for
// the superuser, as everywhere the settings are written.
QString SettingsDir(const QString& appDir);

} // namespace tallyon
