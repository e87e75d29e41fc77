// Puts the black-and-white board picture on the system clipboard.
#include "output/clipboard_picture.h"

#include "core/codes/puzzle_code.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace tallyon {

bool CopyPictureToClipboard(const QImage& picture, const QString& text)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (picture.isNull() || clipboard == nullptr)
        return false;
    clipboard->clear();
    auto* data = new QMimeData; // the clipboard owns it
    data->setImageData(picture);
    if (!text.isEmpty())
        data->setText(text);
    clipboard->setMimeData(data);
    return true;
}

void CopyBoardPicture(const Board& board, int mode, const OutputOptions& options)
{
    if (board.List2.empty())
        return;
    CopyPictureToClipboard(DrawBoardPicture(board, mode, options), QString::fromStdString(EncodePuzzleCode(board)));
}

} // namespace tallyon
