// Fixed-size windows kept at their size where the title bar offers maximize all the same.
//
// On Wayland the title bar is Qt's own, drawn in the window, and it offers maximize and
// minimize on every window, whatever the window's hints say. The compositor then answers with
// the size of the whole screen, which a window of fixed size cannot take: Weston ends the
// program for it at the next repaint ("xdg_surface geometry does not match the configured
// maximized state"). A minimized modal dialog cannot be brought back at all, and the window it
// blocks takes no input. Guarded, such a window undoes the state at once and shows itself
// anew, which cancels the request before the compositor can answer it; it may move, since the
// compositor places every window it is shown.
#pragma once

class QWidget;

namespace tallyon {

enum class Minimize { Allowed, Refused };

// Whether the window system's title bars follow the windows' hints (X11's window managers do;
// Qt's own title bars on Wayland do not).
bool TitleBarsFollowHints();

// Keeps `window` (a top-level widget of fixed size) from staying maximized or full screen, and
// minimized too unless that is allowed, as above.
void KeepWindowNormal(QWidget* window, Minimize minimize);

// KeepWindowNormal where title bars do not follow the hints; elsewhere nothing changes.
void GuardFixedWindow(QWidget* window, Minimize minimize);

// Whether `window` is being shown anew by its guard. A window whose showing starts afresh
// (the options window reads the settings into its controls) keeps what the player has
// chosen and not yet applied, and where the focus is, when it is only shown anew.
bool ShownAnew(const QWidget* window);

} // namespace tallyon
