// Form4, "Tallyon Help": the help page tallyon.htm in a browser with Back, Forward and Exit.
//
// Back and Forward act only while the browser's location holds "#" (a position inside the
// page); on any other location they do nothing. The browser fills the client area above the
// button row and follows the window's size. Each time the window is shown or activated it
// takes scheme entry 2 as background and the control colour (the entry named by
// AppState::ControlColourIndex) for its buttons.
#pragma once

#include "shell/settings.h"

#include <QWidget>

class QPushButton;
class QTextBrowser;

namespace tallyon {

class Form4 : public QWidget {
    Q_OBJECT
public:
    Form4(AppState& state, QWidget* parent = nullptr);

    // Opens the page at `path` (a local file; "page.htm#anchor" opens that position). A missing
    // file shows "The help page <path> was not found." instead of a blank page.
    void Navigate(const QString& path);

    // The browser's current location as text, fragment included.
    QString LocationURL() const;

    // Colours the window from the scheme table (the activation step).
    void ApplyColours();

    QTextBrowser* WebBrowser1 = nullptr;
    QPushButton* Command1 = nullptr; // "Back"
    QPushButton* Command2 = nullptr; // "Forward"
    QPushButton* Command3 = nullptr; // "Exit"

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Command1Click();
    void Command2Click();
    void LayoutControls();
    QPushButton* MakeButton(const QString& caption);

    AppState& state_;
};

} // namespace tallyon
