// Form6, "Tallyon Options": sample shapes, colours and the colour scheme, applied on "Apply".
//
// The window works on samples: activation fills them from the settings, the swatch labels
// give them the colour picker's colour, and Apply (command1) copies them back into the
// settings, writes the path direction into the main window's path-direction tag and raises
// RefreshMainWindow (the main window's hidden refresh button). Clicking a scheme in List1
// previews it at once: AppState::SchemeColours changes before Apply, SchemeFile only on Apply.
// "Rounded", "Oval", "Fill Black" and "Adjust" can be chosen but change no setting. command2
// hides the window. The caller fills List1 with the scheme names and opens the window with
// exec().
#pragma once

#include "shell/settings.h"

#include <QDialog>
#include <QStringList>

#include <array>
#include <functional>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;

namespace tallyon {

class BoxControl;
class ColPik;
class SampleShape;

// The leading numeric value of a text: leading blanks skipped, then an optional sign, digits,
// an optional fraction and exponent; 0 when no number starts the text ("abc", "").
double LeadingValue(const QString& text);

// The "Print Line" entry as a PrintLineWidth: its leading value rounded half to even, values
// below 1 giving 1 ("0", "", "abc" -> 1; "2.6" -> 3; "2.5" -> 2).
int PrintLineWidthFromText(const QString& text);

class Form6 : public QDialog {
    Q_OBJECT
public:
    explicit Form6(AppState& state, QWidget* parent = nullptr);

    // The window exists from start-up, but its controls are made only when it is first shown
    // (or EnsureBuilt() is called): a run that never opens the options does not pay for them.
    // Until then the scheme names of List1 are kept here.
    void SetSchemeNames(const QStringList& names);
    void EnsureBuilt();
    // The controls are made before the window first shows, so that they show with it.
    void setVisible(bool visible) override;

    // Activation, run each time the window is shown: position, picker colours, samples from
    // the settings, scheme colours, Frame1's caption, path direction, node shape, print line.
    void Activate();

    // A mouse button (1 left, 2 right) released on one of the swatch labels Label1, Label2,
    // Label3, Label5 (Label4 does nothing).
    void SwatchMouseUp(QLabel* swatch, int button);
    // The mouse released on List1: previews the selected scheme.
    void List1Click();
    // "Apply": samples into the settings, then RefreshMainWindow.
    void command1Click();
    // Hides the window.
    void command2Click();

    // Frames.
    QGroupBox* Frame1 = nullptr; // "Colour Scheme"
    QGroupBox* Frame2 = nullptr; // "Colours"
    QGroupBox* Frame3 = nullptr; // "Shape"
    QGroupBox* Frame4 = nullptr; // "Colour Selector"
    QGroupBox* Frame5 = nullptr; // "Path Direction"
    QGroupBox* Frame6 = nullptr; // "Size"
    QGroupBox* Frame7 = nullptr; // "Print Line"
    // Controls.
    QLineEdit* Text1 = nullptr;
    QRadioButton* Option1 = nullptr; // "Rectangle"
    QRadioButton* Option2 = nullptr; // "Circle"
    QRadioButton* Option3 = nullptr; // "Rounded"
    QRadioButton* Option4 = nullptr; // "Oval"
    QCheckBox* Check1 = nullptr;     // "Fill Black"
    QCheckBox* Check2 = nullptr;     // "Adjust"
    std::array<QRadioButton*, 5> Option5{};
    ColPik* ColPik1 = nullptr;
    SampleShape* shape2 = nullptr; // grid colour and width
    SampleShape* Shape1 = nullptr; // shape colour
    SampleShape* Shape3 = nullptr; // user line colour
    QLabel* Label1 = nullptr;      // "Shape"
    QLabel* Label2 = nullptr;      // "Grid"
    QLabel* Label3 = nullptr;      // "Number"
    QLabel* Label4 = nullptr;      // font colour sample
    QLabel* Label5 = nullptr;      // "User Line"
    QListWidget* List1 = nullptr;
    BoxControl* command1 = nullptr; // "Apply"
    BoxControl* command2 = nullptr; // "Close"

signals:
    // Stands for pressing the main window's hidden Command2: re-apply the scheme, redraw.
    void RefreshMainWindow();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QStringList schemeNames_; // List1's names until the controls are made
    bool built_ = false;
    // Building the controls (options_form_layout.cpp).
    void BuildColours();
    void BuildSelector();
    void BuildShape();
    void BuildSizeAndPrintLine();
    void BuildPathDirection();
    void BuildScheme();
    QGroupBox* MakeFrame(const QString& caption, const QRect& geometry);
    QLabel* MakeSwatch(QGroupBox* frame, const QString& caption, const QString& tip, int top);
    QRadioButton* MakeOption(QGroupBox* frame, const QString& caption, int top);

    void Recolour();
    void LoadSamples();
    void SelectPathDirection();
    Colour LabelTextColour(QLabel* label) const;

    AppState& state_;
};

} // namespace tallyon
