// Bringing a newly shown window to the front with the keyboard focus.
#pragma once

class QWidget;

namespace tallyon {

// Raises the window above the program's others and gives it the keyboard focus. Under a
// window manager this is a request it may refine; on a bare X server, where nothing raises or
// focuses a new window, it is what keeps a dialog from opening hidden behind the main window,
// which its modality then blocks. Call it from the window's showEvent.
void BringToFront(QWidget* window);

} // namespace tallyon
