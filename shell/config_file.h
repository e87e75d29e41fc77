// The configuration file "tallyon.cfg" beside the program: the player's settings between runs.
//
// Line 1 holds nine integers (GridSize, NodeShape, GridLineWidth, ShapeColour, GridColour,
// FontColour, PathDirection, UserLineColour, PrintLineWidth), line 2 the SchemeFile.
#pragma once

#include "shell/settings.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace tallyon {

// SettingsDir (AppDir when empty) + "tallyon.cfg".
QString ConfigFilePath(const AppState& state);

// Parses a configuration file's bytes. A number ends at a run of blanks, a comma or a line
// end, so the nine may stand on one line or several; an empty field between two commas reads
// as 0. After the ninth number and its separator, SchemeFile is the next field: up to a comma
// or line end, trimmed. Anything after it is ignored. GridLineWidth below 1 becomes 1; no other
// value is checked. A number with a decimal point or an exponent is rounded half to even.
// nullopt for a read error: a field that is not a number (text), one outside the 32-bit
// signed range, or the end of the file before the SchemeFile field (which may be empty, but
// its line must be there).
std::optional<Settings> ParseConfig(const QByteArray& bytes);

// The file's two lines: the nine numbers in the standard numeric print form (a non-negative
// number is preceded by a blank, numbers joined by a blank: " 7  2  1  0  0  16777215 ...";
// colours as signed 32-bit values) and SchemeFile as it stands.
QStringList FormatConfig(const Settings& settings);

// Reads the file into state.settings and returns true. When the file cannot be opened or read
// (missing, a directory, malformed), shows the information message "Configuration file:" /
// path / "could not be accessed, new file will be created", resets every setting to
// FreshInstallSettings() and writes the file at once (a failure of that write is silent, and
// an existing file marked read-only is left as it is); returns false.
bool ReadConfig(AppState& state);

// Writes the settings (GridSize is the size the main window shows for the next puzzle) to
// the file atomically. On failure (a directory in the way, the file or its directory marked
// read-only, disk errors) shows the critical message "Configuration file:" / path / "could not
// be accessed, options not saved", leaves the old file intact and returns false.
bool WriteConfig(AppState& state);

} // namespace tallyon
