// FNDialog: a "..." push button that opens the file-open or file-save dialog and returns the
// chosen path. No window of the game places it yet; it is a finished control of the kit for
// the window that first needs a file chosen.
//
// Events of the button are passed on with their arguments by reference, so the holding window
// may change them; a KeyPress whose character is set to 0 is dropped.
#pragma once

#include "platform/colour.h"

#include <QFont>
#include <QPixmap>
#include <QString>
#include <QWidget>

#include <functional>

class QFileDialog;
class QPushButton;

namespace tallyon {

class PropertyBag;

class FNDialog : public QWidget {
    Q_OBJECT

public:
    explicit FNDialog(QWidget* parent = nullptr);

    // Opens the dialog: "SAVE" (any case) the save dialog, anything else the open dialog.
    // It starts in DefaultDir (a trailing "/" or "\" changes nothing) with `initialFile`
    // preselected when not blank, and returns the chosen full path, or "" on cancel. The
    // process's current directory is the same afterwards as before.
    QString ShowDialog(const QString& mode, const QString& initialFile = QString());

    // Test seam: called with the dialog just before it is shown; empty to clear.
    using DialogHook = std::function<void(QFileDialog&)>;
    static void SetDialogHook(DialogHook hook);

    Colour BackColor() const { return back_; }
    void SetBackColor(Colour colour);
    Colour ForeColor() const { return fore_; }
    void SetForeColor(Colour colour);
    bool Enabled() const { return isEnabled(); }
    void SetEnabled(bool enabled);
    QFont Font() const;
    void SetFont(const QFont& font);
    QString FileTypes() const { return fileTypes_; }
    void SetFileTypes(const QString& types);
    QString FileTypesName() const { return fileTypesName_; }
    void SetFileTypesName(const QString& name);
    QString Title() const { return title_; }
    void SetTitle(const QString& title);
    QString DefaultDir() const { return defaultDir_; }
    void SetDefaultDir(const QString& dir);
    QString Caption() const;
    void SetCaption(const QString& caption);
    QPixmap Picture() const { return picture_; }
    void SetPicture(const QPixmap& picture);

    // Saved properties: all are read back except BackColor, which is only written.
    void ReadProperties(const PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;

    QPushButton* command1 = nullptr;

signals:
    void Click();
    void KeyDown(int& keyCode, int& shift);
    void KeyPress(int& keyAscii);
    void KeyUp(int& keyCode, int& shift);
    void MouseDown(int& button, int& shift, float& x, float& y);
    void MouseMove(int& button, int& shift, float& x, float& y);
    void MouseUp(int& button, int& shift, float& x, float& y);
    void PropertyChanged(const QString& name);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ApplyColours();
    bool PassKey(QEvent* event);
    void PassMouse(QEvent* event);

    Colour back_;
    Colour fore_ = RGB(0, 0, 0);
    QString fileTypes_;
    QString fileTypesName_;
    QString title_ = QStringLiteral("Select File");
    QString defaultDir_;
    QPixmap picture_;
};

} // namespace tallyon
