// Form6, "Tallyon Options": activation, swatch clicks, scheme preview and Apply.
#include "shell/options_form.h"

#include "core/board/board.h"
#include "shell/options_samples.h"
#include "shell/schemes.h"
#include "shell/window_paint.h"
#include "ui/box_control.h"
#include "ui/col_pik.h"
#include "ui/fixed_window.h"
#include "ui/front_window.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QRadioButton>

#include <cmath>

namespace tallyon {

namespace {

constexpr int kMaxGridLineWidth = 6;

// Selects the button at `index` of a group and clears the others; -1 clears all.
template <typename Buttons>
void SelectOnly(const Buttons& buttons, int index)
{
    int i = 0;
    for (QRadioButton* button : buttons) {
        button->setAutoExclusive(false);
        button->setChecked(i++ == index);
        button->setAutoExclusive(true);
    }
}

} // namespace

double LeadingValue(const QString& text)
{
    const QString trimmed = text.trimmed();
    qsizetype end = 0;
    auto digits = [&] {
        const qsizetype start = end;
        while (end < trimmed.size() && trimmed[end].isDigit() && trimmed[end].unicode() < 128)
            ++end;
        return end > start;
    };
    if (end < trimmed.size() && (trimmed[end] == u'+' || trimmed[end] == u'-'))
        ++end;
    bool any = digits();
    if (end < trimmed.size() && trimmed[end] == u'.') {
        ++end;
        any = digits() || any;
    }
    if (!any)
        return 0.0;
    const qsizetype mantissaEnd = end;
    if (end < trimmed.size() && (trimmed[end] == u'e' || trimmed[end] == u'E')) {
        ++end;
        if (end < trimmed.size() && (trimmed[end] == u'+' || trimmed[end] == u'-'))
            ++end;
        if (!digits())
            end = mantissaEnd;
    }
    bool ok = false;
    const double value = trimmed.left(end).toDouble(&ok);
    return ok ? value : 0.0;
}

int PrintLineWidthFromText(const QString& text)
{
    const int width = RoundHalfEven(LeadingValue(text));
    return width < 1 ? 1 : width;
}

void Form6::setVisible(bool visible)
{
    if (visible)
        EnsureBuilt();
    QDialog::setVisible(visible);
}

void Form6::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (ShownAnew(this))
        return; // the player's choices, not yet applied, stay
    Activate();
    BringToFront(this);
}

void Form6::Activate()
{
    EnsureBuilt();
    if (QWidget* main = parentWidget())
        move(main->geometry().center() - rect().center());
    ColPik1->SetColours(state_.SchemeColours[kSchemeBackground], state_.SchemeColours[state_.ControlColourIndex]);
    LoadSamples();
    Recolour();
    Frame1->setTitle(state_.settings.SchemeFile);
    SelectPathDirection();
    const int shape = state_.settings.NodeShape;
    SelectOnly(std::array{Option1, Option2, Option3, Option4}, shape == kBoxNodes ? 0 : shape == kRoundNodes ? 1 : -1);
    Text1->setText(QString::number(state_.settings.PrintLineWidth));
}

void Form6::LoadSamples()
{
    const Settings& s = state_.settings;
    shape2->SetBorderColor(s.GridColour);
    shape2->SetBorderWidth(s.GridLineWidth);
    Shape1->SetFillColor(s.ShapeColour);
    Shape3->SetFillColor(s.UserLineColour);
    windowpaint::SetTextColour(Label4, s.FontColour);
}

void Form6::SelectPathDirection()
{
    // Read afresh from the main window's Label6 tag, which its clicks may have stepped.
    state_.settings.PathDirection = state_.StartSideTag;
    const int direction = state_.settings.PathDirection;
    SelectOnly(Option5, direction >= 0 && direction < 5 ? direction : -1);
}

// The window and every frame, label, option, check box and the list take the background;
// the text box takes the control colour.
void Form6::Recolour()
{
    const Colour back = state_.SchemeColours[kSchemeBackground];
    windowpaint::SetBackground(this, back);
    for (QGroupBox* frame : {Frame1, Frame2, Frame3, Frame4, Frame5, Frame6, Frame7})
        windowpaint::SetBackground(frame, back);
    for (QLabel* label : {Label1, Label2, Label3, Label4, Label5})
        windowpaint::SetBackground(label, back);
    // Option buttons and check boxes fill their background from the Button role.
    for (QWidget* option : {Option1, Option2, Option3, Option4})
        windowpaint::SetButtonColour(option, back);
    for (QWidget* option : Option5)
        windowpaint::SetButtonColour(option, back);
    for (QWidget* check : {Check1, Check2})
        windowpaint::SetButtonColour(check, back);
    windowpaint::SetBaseColour(List1, back);
    windowpaint::SetBaseColour(Text1, state_.SchemeColours[kSchemeControl]);
    const Colour control = state_.SchemeColours[state_.ControlColourIndex];
    for (BoxControl* button : {command1, command2}) {
        button->SetBackColor(control);
        button->SetForeColor(fixed::DarkText);
        button->Refresh();
    }
}

Colour Form6::LabelTextColour(QLabel* label) const { return FromQColor(label->palette().color(QPalette::WindowText)); }

void Form6::SwatchMouseUp(QLabel* swatch, int button)
{
    const Colour colour = ColPik1->SelectedColour();
    if (swatch == Label2 && button == 2) {
        const int width = shape2->BorderWidth() + 1;
        shape2->SetBorderWidth(width > kMaxGridLineWidth ? 1 : width);
        return;
    }
    if (button != 1)
        return;
    if (swatch == Label1)
        Shape1->SetFillColor(colour);
    else if (swatch == Label2)
        shape2->SetBorderColor(colour);
    else if (swatch == Label3)
        windowpaint::SetTextColour(Label4, colour);
    else if (swatch == Label5)
        Shape3->SetFillColor(colour);
}

bool Form6::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease) {
        auto* label = qobject_cast<QLabel*>(watched);
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (label && label->rect().contains(mouse->position().toPoint()))
            SwatchMouseUp(label, MouseButtonCode(mouse->button()));
    }
    return QDialog::eventFilter(watched, event);
}

void Form6::List1Click()
{
    const QList<QListWidgetItem*> selected = List1->selectedItems();
    if (selected.isEmpty())
        return;
    const QString name = selected.first()->text();
    const Colour back = LoadSchemePreview(state_, name + QStringLiteral(".col"));
    ColPik1->SetColours(back, state_.SchemeColours[state_.ControlColourIndex]);
    Recolour();
    Frame1->setTitle(name);
}

void Form6::command1Click()
{
    Settings& s = state_.settings;
    const QList<QListWidgetItem*> selected = List1->selectedItems();
    if (!selected.isEmpty() && !selected.first()->text().isEmpty())
        s.SchemeFile = selected.first()->text() + QStringLiteral(".col");
    (void)Check1->isChecked(); // "Fill Black" is read but applies nothing
    if (Option1->isChecked())
        s.NodeShape = kBoxNodes;
    else if (Option2->isChecked())
        s.NodeShape = kRoundNodes;
    s.GridColour = shape2->BorderColor();
    s.GridLineWidth = shape2->BorderWidth();
    s.ShapeColour = Shape1->FillColor();
    s.UserLineColour = Shape3->FillColor();
    s.FontColour = LabelTextColour(Label4);
    s.PrintLineWidth = PrintLineWidthFromText(Text1->text());
    for (int i = 0; i < 5; ++i) {
        if (Option5[i]->isChecked())
            s.PathDirection = i;
    }
    // Into the main window's Label6 tag, for the next puzzle; its caption stays until the
    // label is next clicked.
    state_.StartSideTag = s.PathDirection;
    emit RefreshMainWindow();
}

void Form6::command2Click() { hide(); }

} // namespace tallyon
