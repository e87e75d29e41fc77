// AboutForm, "About Tallyon": the product text, an emblem picture and an OK button.
//
// Shown modally (exec). Closes on OK, on a mouse press on the text, or on Esc. Each time it
// is shown or activated, the window and the text take scheme entry 2 and OK entry 5.
#pragma once

#include "shell/settings.h"

#include <QDialog>
#include <QPixmap>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace tallyon {

// "Contact: see README" while `homepage` is empty, else "Contact: " + homepage.
QString ContactLine(const QString& homepage);

// The about text, lines joined by CR LF, for the given release month ("November 2026") and
// homepage.
QString AboutTextFor(const QString& releaseMonth, const QString& homepage);

// The emblem shown in Image1: a 3 x 3 lattice of nodes with a path through it, `side` pixels.
QPixmap TallyonEmblem(int side);

class AboutForm : public QDialog {
    Q_OBJECT
public:
    AboutForm(AppState& state, QWidget* parent = nullptr);

    // Colours the window from the scheme table (the activation step).
    void ApplyColours();

    QPlainTextEdit* AboutText = nullptr;
    QLabel* Image1 = nullptr;
    QPushButton* AboutOk = nullptr;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    AppState& state_;
};

} // namespace tallyon
