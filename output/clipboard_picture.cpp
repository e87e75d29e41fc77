// Puts the black-and-white board picture on the system clipboard.
#include "output/clipboard_picture.h"

#include <QClipboard>
#include <QGuiApplication>

namespace tallyon {

bool CopyPictureToClipboard(const QImage& picture)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (picture.isNull() || clipboard == nullptr)
        return false;
    clipboard->clear();
    clipboard->setImage(picture);
    return true;
}

void CopyBoardPicture(const Board& board, int mode, const OutputOptions& options)
{
    if (board.List2.empty())
        return;
    CopyPictureToClipboard(DrawBoardPicture(board, mode, options));
}

} // namespace tallyon
