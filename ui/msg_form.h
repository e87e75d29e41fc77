// MsgForm: the program's own modal message box ("Message"), filled from a style string.
//
// Layout sizes are twips (15 per logical pixel); every design size is a multiple of 15, so
// the pixel geometry of the controls times 15 is the twips layout exactly.
#pragma once

#include "platform/canvas.h"
#include "platform/colour.h"
#include "ui/message_icons.h"

#include <QDialog>
#include <QPointer>
#include <QPushButton>
#include <QString>

#include <array>
#include <functional>

class QLabel;

namespace tallyon {

// One answer button: a push-style toggle button whose Tag holds its result code as text.
// It never stays drawn pressed; Enter or a mouse release over it raises Chosen.
class MsgButton : public QPushButton {
    Q_OBJECT
public:
    explicit MsgButton(QWidget* parent);
    QString Tag;

signals:
    void Chosen(tallyon::MsgButton* button);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};

class MsgForm : public QDialog {
    Q_OBJECT
public:
    // Design sizes in twips.
    static constexpr int kIconLeft = 240, kIconTop = 180, kIconSize = 600;
    static constexpr int kLabelLeft = 1080, kLabelTop = 300;
    static constexpr int kButtonWidth = 1200, kButtonHeight = 375;
    static constexpr int kGap = 120; // below the text and below the label
    static constexpr int kFrameAllowance = 600;
    // The part of the frame allowance taken by the title bar, which Qt keeps outside the
    // client area; the rest remains as the bottom margin.
    static constexpr int kTitleBarTwips = 360;

    explicit MsgForm(QWidget* parent = nullptr);

    // Fills, lays out and shows the box modally; returns Result when the wait ends, which only
    // a button can end: the frame has no close control, and a close asked for otherwise (a
    // window manager's key, Escape) is refused, since it would return the previous choice.
    int Run(const QString& message, const QString& style);
    // Fills and lays out the box without showing it.
    void Prepare(const QString& message, const QString& style);

    // Colours as the scheme code sets them (background, text, buttons).
    void SetBackColour(Colour colour);
    Colour BackColour() const { return back_; }
    void SetForeColour(Colour colour);
    Colour ForeColour() const { return fore_; }
    void SetButtonColour(Colour colour) { button_ = colour; }
    Colour ButtonColour() const { return button_; }
    // Gives the scheme table's entry at the control-colour index; a black button colour is
    // replaced by it when a message is shown.
    void SetSchemeSource(std::function<Colour()> source) { schemeSource_ = std::move(source); }

    // The window's font, used for the text and (one point smaller) for the buttons.
    void SetFontName(const QString& name);
    void SetFontSize(int points);
    void SetFontBold(bool bold);
    // The title is stored for the program; the caption shown is always "Message".
    void SetTitle(const QString& title) { title_ = title; }
    QString Title() const { return title_; }

    // The window the box is shown over while it is on screen. Where the window system does not
    // keep a program's dialogs over its windows by itself (Wayland), the box is made transient
    // for it, so that a click on that window cannot bury the box the game waits for.
    void SetOwner(QWidget* owner) { owner_ = owner; }
    QWidget* Owner() const { return owner_; }

    // The window size as laid out, in twips (the height includes the frame allowance).
    int WidthTwips() const { return widthTwips_; }
    int HeightTwips() const { return heightTwips_; }

    QLabel* Label1 = nullptr;
    std::array<QLabel*, kMessageIconCount> icons{};
    std::array<MsgButton*, 3> cmd{};
    int LastButton = -1; // index of the last button filled in this call
    int Result = 0;      // code of the last chosen button, kept between calls

    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void Choose(MsgButton* button);
    void ApplyColours();
    void ApplyFonts();
    void ParseStyle(const QString& style);
    void AddButton(const QString& caption, int code);
    void ShowIcon(int index);
    void LayOut();

    Colour back_;
    Colour fore_ = RGB(0, 0, 0);
    Colour button_ = RGB(0, 0, 0);
    std::function<Colour()> schemeSource_;
    QPointer<QWidget> owner_;
    QString title_;
    int widthTwips_ = 0;
    int heightTwips_ = 0;
};

} // namespace tallyon
