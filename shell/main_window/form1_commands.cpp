// Form1's menu commands, exit sequence, colour scheme and its side of the play routines.
#include "shell/main_window/form1.h"

#include "core/generator/generator.h"
#include "output/clipboard_picture.h"
#include "output/print_job.h"
#include "platform/answer_codes.h"
#include "play/controls.h"
#include "play/draw.h"
#include "shell/about_form.h"
#include "shell/config_file.h"
#include "shell/help_form.h"
#include "shell/main_window/picture_box.h"
#include "shell/options_form.h"
#include "shell/scheme_paint.h"
#include "shell/schemes.h"
#include "shell/window_paint.h"
#include "ui/box_control.h"
#include "ui/message_box.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>

#include <cmath>

namespace tallyon {

// ---- Menu commands ---------------------------------------------------------------------

void Form1::ShowOptions()
{
    form6_->exec();
    QCoreApplication::processEvents();
}

namespace {

OutputOptions OutputOptionsFor(const Settings& settings, const QWidget* picture)
{
    OutputOptions options;
    options.NodeShape = settings.NodeShape;
    options.GridLineWidth = settings.GridLineWidth;
    options.PrintLineWidth = settings.PrintLineWidth;
    options.fontName = picture->font().family();
    options.fontBold = picture->font().bold();
    options.pictureWidth = picture->width() * kTwipsPerPixel;
    options.pictureHeight = picture->height() * kTwipsPerPixel;
    options.devicePixelRatio = picture->devicePixelRatioF();
    return options;
}

} // namespace

void Form1::PrintCommand()
{
    PrintPuzzleAndSolution(board_, OutputOptionsFor(state_.settings, Picture1),
                           state_.SettingsDir.isEmpty() ? state_.AppDir : state_.SettingsDir);
}

void Form1::CopyCommand(int mode)
{
    // Does nothing before the first puzzle.
    CopyBoardPicture(board_, mode, OutputOptionsFor(state_.settings, Picture1));
}

void Form1::ShowHelp()
{
    if (!form4_)
        form4_ = new Form4(state_, this); // a window of its own, owned by the main window
    form4_->Navigate(state_.AppDir + "tallyon.htm");
    form4_->show();
}

void Form1::ShowAbout()
{
    AboutForm about(state_, this);
    about.exec();
    QCoreApplication::processEvents();
}

// ---- Exit ------------------------------------------------------------------------------

void Form1::ExitCommand()
{
    const int answer = ShowMessage("Exit?", "vbYesNo+vbquestion");
    QCoreApplication::processEvents();
    if (answer != kAnswerYes)
        return;
    WriteConfig(state_);
    CloseOtherWindows();
    exiting_ = true;
    close();
}

void Form1::CloseOtherWindows()
{
    // Close the other open windows one by one; give up after 20 steps without progress.
    for (int steps = 0; steps <= 20; ++steps) {
        QWidget* other = nullptr;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window != this && window->isVisible()) {
                other = window;
                break;
            }
        if (!other)
            return;
        other->close();
        other->hide();
    }
}

void Form1::closeEvent(QCloseEvent* event)
{
    // Any way of closing the main window ends the program; only Exit has saved the settings.
    Timer2.stop();
    event->accept();
    if (form4_)
        form4_->close();
    QCoreApplication::quit();
}

// ---- Colour scheme ---------------------------------------------------------------------

void Form1::ApplyScheme()
{
    using namespace windowpaint;
    state_.ControlColourIndex = kSchemeControl;
    const SchemeTable& colours = state_.SchemeColours;
    const Colour background = colours[kSchemeBackground];
    const Colour control = colours[state_.ControlColourIndex];

    SetBackground(this, background);
    SetBackground(centralWidget(), background);
    Picture1->SetBackColour(background);
    Picture4->SetBackColour(background); // only ever a coloured panel: no drawing, no image
    SetBackground(Picture4, background);
    Picture4->update();
    ApplySchemeToMessageBox(state_);
    if (SchemeColoursMenu(state_.settings.SchemeFile))
        SetMenuColour(menuBar(), colours[kSchemeMenuBar]);

    for (QLabel* label : {Label1, Label2, Label5, Label7, Label8}) {
        SetBackground(label, background);
        SetTextColour(label, fixed::DarkText);
    }
    for (QLabel* label : {Label3, static_cast<QLabel*>(Label4), static_cast<QLabel*>(Label6)}) {
        SetBackground(label, control);
        SetTextColour(label, fixed::DarkText);
    }
    for (BoxControl* button : {cmdnew, cmdshowsol, cmdhelp, cmdverify, undoman}) {
        button->SetBackColor(control);
        button->Refresh();
    }
}

// ---- PlayHost --------------------------------------------------------------------------

void Form1::SetStatus(const std::string& text)
{
    Label7->setText(QString::fromStdString(text));
    if (statusLog_.isEmpty())
        return;
    QFile log(statusLog_);
    if (log.open(QIODevice::Append))
        log.write(QByteArray::fromStdString(text + "\n"));
}

std::string Form1::Status() const { return Label7->text().toStdString(); }

void Form1::SetHoverCaptions(const std::string& row, const std::string& column)
{
    Label1->setText(QString::fromStdString(row));
    Label2->setText(QString::fromStdString(column));
}

void Form1::SetIndicator(Colour colour)
{
    indicator_ = colour;
    windowpaint::SetBackground(Label8, colour);
}

void Form1::SetCheckTimer(bool enabled)
{
    if (!enabled)
        Timer2.stop();
    else if (!Timer2.isActive())
        Timer2.start();
}

void Form1::ShowErrorMarker(int left, int top, int size)
{
    const int px = kTwipsPerPixel;
    errorMarker->setGeometry(left / px, top / px, std::max(4, size / px), std::max(4, size / px));
    errorMarker->show();
    errorMarker->raise();
}

void Form1::HideErrorMarker() { errorMarker->hide(); }

void Form1::SetBusy(bool busy)
{
    if (busy)
        QApplication::setOverrideCursor(Qt::BusyCursor);
    else
        QApplication::restoreOverrideCursor();
}

void Form1::SetBoardEnabled(bool enabled)
{
    Picture1->setEnabled(enabled);
    Picture4->setEnabled(enabled);
}

NextPuzzle Form1::Next() const { return {state_.settings.GridSize, state_.StartSideTag, nextGrade_}; }

void Form1::SetNextGrade(std::optional<Grade> grade) { nextGrade_ = grade; }

void Form1::SetNextGridSize(int size)
{
    state_.settings.GridSize = size;
    Label4->setText(QString::fromStdString(GridSizeText(size)));
}

void Form1::SetNextPathDirection(int direction)
{
    state_.StartSideTag = direction; // the setting itself changes only in the options window
    // Directions 3 and 4, set only by the options, have no caption: the label keeps its own.
    if (const std::string caption = StartSideCaption(direction); !caption.empty())
        Label6->setText(QString::fromStdString(caption));
}

int Form1::Ask(const std::string& message, const std::string& style)
{
    return ShowMessage(QString::fromStdString(message), QString::fromStdString(style));
}

int Form1::PictureWidth() const { return Picture1->WidthTwips(); }

std::unique_ptr<Canvas> Form1::OpenBoardCanvas() { return Picture1->OpenCanvas(); }

std::unique_ptr<Canvas> Form1::OpenOverlayCanvas() { return Picture1->OpenOverlayCanvas(); }

void Form1::ClearOverlay() { Picture1->ClearOverlay(); }

DrawStyle Form1::Style() const
{
    const Settings& s = state_.settings;
    DrawStyle style;
    style.GridColour = s.GridColour;
    style.ShapeColour = s.ShapeColour;
    style.FontColour = s.FontColour;
    style.UserLineColour = s.UserLineColour;
    style.Background = state_.SchemeColours[kSchemeBackground];
    style.MarkColour = state_.SchemeColours[kSchemeMarks];
    style.GridLineWidth = std::max(1, s.GridLineWidth);
    style.NodeShape = s.NodeShape;
    style.FontFamily = Picture1->font().family().toStdString();
    return style;
}

void Form1::ApplyLayoutAndColours()
{
    LayoutControls();
    ApplyScheme();
}

} // namespace tallyon
