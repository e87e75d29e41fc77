// Putting a colour scheme on widgets: the menu bar with all of its menus, and the message box.
#include "shell/scheme_paint.h"

#include "ui/message_box.h"
#include "ui/msg_form.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPalette>
#include <QSet>
#include <QStyle>

#include <functional>

namespace tallyon {

namespace {

// Calls visit for every menu reachable from the widget's actions, each once.
void ForEachMenu(const QWidget* root, QSet<QMenu*>& seen, const std::function<void(QMenu*)>& visit)
{
    for (QAction* action : root->actions()) {
        QMenu* menu = action->menu();
        if (menu == nullptr || seen.contains(menu))
            continue;
        seen.insert(menu);
        visit(menu);
        ForEachMenu(menu, seen, visit);
    }
}

// Fusion fills a menu 8% lighter than its Base colour; giving it a Base that much darker
// makes the menu show the colour asked for.
QColor MenuBase(const QWidget* w, const QColor& c)
{
    const bool fusion = qobject_cast<const QMenu*>(w) != nullptr &&
                        w->style()->name().compare(QLatin1String("fusion"), Qt::CaseInsensitive) == 0;
    return fusion ? c.darker(108) : c;
}

void ForBarAndMenus(QMenuBar* bar, const std::function<void(QWidget*)>& visit)
{
    if (bar == nullptr)
        return;
    visit(bar);
    QSet<QMenu*> seen;
    ForEachMenu(bar, seen, [&](QMenu* menu) { visit(menu); });
}

} // namespace

void SetMenuColour(QMenuBar* bar, Colour colour)
{
    const QColor c = ToQColor(colour);
    ForBarAndMenus(bar, [&](QWidget* w) {
        QPalette p = w->palette();
        p.setColor(QPalette::Window, c);
        p.setColor(QPalette::Button, c);
        p.setColor(QPalette::Base, MenuBase(w, c));
        w->setPalette(p);
        w->setAutoFillBackground(true);
    });
}

void ApplySchemeToMessageBox(const AppState& state)
{
    MsgForm& box = MessageForm();
    box.SetBackColour(state.SchemeColours[kSchemeBackground]);
    box.SetButtonColour(state.SchemeColours[kSchemeControl]);
    box.SetForeColour(fixed::DarkText);
}

} // namespace tallyon
