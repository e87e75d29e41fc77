// The program-wide settings and the active colour scheme's table, shared by every window.
//
// One AppState is owned by main() and handed to the windows by reference; nothing here is
// global.
#pragma once

#include "platform/colour.h"

#include <QString>

#include <array>

namespace tallyon {

// The settings kept in tallyon.cfg, with their values before the file is read.
struct Settings {
    int GridSize = 0;
    int NodeShape = 0; // 1 Rectangle, 2 Circle
    int GridLineWidth = 0;
    Colour ShapeColour = 0;
    Colour GridColour = fixed::DarkText;
    Colour FontColour = fixed::DarkText;
    int PathDirection = 0; // 0 Random, 1 Left toRight, 2 Top to Bottom, 3, 4
    Colour UserLineColour = 0;
    int PrintLineWidth = 0;
    QString SchemeFile;
};

// The values a fresh install starts with (written when tallyon.cfg cannot be read).
Settings FreshInstallSettings();

// Entries of the scheme table: 2 backgrounds, 3 menu bar, 4 controls, 5 about window, 12 the
// player's crosses on the board. Of the entries that drove nothing before, only 12 (a dark
// shade in every scheme) stands out from the board's background by a contrast of at least 3:1
// in each scheme of the shipped all.col; every other falls to between 1 and 2.6 in one.
using SchemeTable = std::array<Colour, 14>;
inline constexpr int kSchemeBackground = 2;
inline constexpr int kSchemeMenuBar = 3;
inline constexpr int kSchemeControl = 4;
inline constexpr int kSchemeAbout = 5;
inline constexpr int kSchemeMarks = 12;

// The shipped "xp.col" scheme, built in. The table holds it until a scheme is loaded, so a
// tallyon.cfg naming a scheme that all.col lacks still gets a readable window, not a black one.
inline constexpr SchemeTable kXpSchemeColours = {RGB(172, 168, 153), RGB(255, 255, 255),
                                                 RGB(236, 233, 216), RGB(236, 233, 216),
                                                 RGB(245, 244, 236), RGB(214, 223, 247),
                                                 RGB(49, 106, 197),  RGB(241, 239, 226),
                                                 RGB(226, 223, 205), RGB(255, 255, 255),
                                                 RGB(0, 84, 227),    RGB(61, 149, 255),
                                                 RGB(128, 128, 128), 0};

struct AppState {
    QString AppDir;      // the executable's directory, ending in "/"
    QString SettingsDir; // where tallyon.cfg is kept, ending in "/"; empty: AppDir
    Settings settings;
    SchemeTable SchemeColours = kXpSchemeColours;
    int ControlColourIndex = kSchemeControl;
    // The main window's Label6 tag: the start side of the next puzzle (0 Random, 1 Left, 2 Top;
    // 3 and 4 as Left). It takes PathDirection at start-up and from the options' Apply, and is
    // stepped by clicks on Label6, which leave PathDirection alone; the options window reads
    // PathDirection back from it each time it opens.
    int StartSideTag = 0;
    QString PreviewSchemesFile; // bare "all.col", opened relative to the current directory
};

} // namespace tallyon
