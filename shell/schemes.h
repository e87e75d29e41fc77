// Colour schemes: the names in "all.col" and loading one scheme into AppState::SchemeColours.
//
// "all.col" is a run of blocks: a header line holding the scheme's name (".col" included),
// then thirteen lines "red;green;blue" for entries 0 to 12. Entry 13 is never filled from it.
#pragma once

#include "shell/settings.h"
#include "shell/text_file.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace tallyon {

// AppDir + "all.col".
QString SchemesFilePath(const AppState& state);

// The scheme names of a schemes file's lines, in file order: the text in front of the first
// ".col" (exact case) of every line that holds one.
QStringList SchemeNamesIn(const QStringList& lines);

// The names in AppDir + "all.col"; nullopt when that file cannot be read, with the reason in
// *problem when given.
std::optional<QStringList> ListSchemes(const AppState& state, FileProblem* problem = nullptr);

// The start-up report for a schemes file that cannot be read: writes "Tallyon: colour
// schemes file <reason>: <path>" to stderr, shows a critical message box naming the path and
// the reason ("not found" for a missing file), and exits with 1.
[[noreturn]] void FailMissingSchemes(const QString& path, FileProblem problem = FileProblem::Missing);

// One colour channel from a field of a colour line: its leading numeric value (leading blanks
// skipped, an optional sign, digits, an optional fraction rounded half to even); no digits
// read as 0, a value above 255 counts as 255, a negative one as 0.
int SchemeChannelValue(const QString& field);

// The start-up load: finds the line exactly equal to name in AppDir + "all.col" and fills
// entries 0..12 from the thirteen lines after it; returns entry 2. A line of fewer than three
// fields or the end of the file inside the block ends the load there, keeping the entries read
// so far (the result is 0 if entry 2 was not reached). Not found: the critical message
// "Colour Scheme: <name> not found", SchemeFile becomes "xp.col", the table is unchanged, the
// result is 0. A file that cannot be opened ends the load quietly with 0.
Colour LoadSchemeAtStartup(AppState& state, const QString& name);

// The options window's preview load. A name equal to "default.col" in any case is built in:
// entries 2 and 4 become the platform's list-box background, entry 3 RGB(20, 20, 200), and
// entry 2 is returned; nothing is read. Otherwise like the start-up load, but from
// state.PreviewSchemesFile ("all.col" when empty) relative to the current directory, and a
// missing scheme shows the plain message "Color Scheme: <name> not found" (style "vbok"),
// sets SchemeFile to "default.col" and returns 0.
Colour LoadSchemePreview(AppState& state, const QString& name);

// Whether a scheme colours the main window's menu bar: not when its name, upper-cased,
// contains "DEFAULT".
bool SchemeColoursMenu(const QString& schemeFile);

} // namespace tallyon
