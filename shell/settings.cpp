// The settings a fresh install starts with.
#include "shell/settings.h"

#include "core/board/board.h"

namespace tallyon {

Settings FreshInstallSettings()
{
    Settings s;
    s.GridSize = 7;
    s.NodeShape = kRoundNodes;
    s.GridLineWidth = 1;
    s.ShapeColour = RGB(0, 0, 0);
    s.GridColour = RGB(0, 0, 0);
    s.FontColour = RGB(255, 255, 255);
    s.PathDirection = 0;
    s.UserLineColour = RGB(128, 0, 0);
    s.PrintLineWidth = 6;
    s.SchemeFile = QStringLiteral("xp.col");
    return s;
}

} // namespace tallyon
