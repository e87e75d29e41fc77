// Copying the puzzle or its solution to the clipboard as a picture (menu "Copy to Clipboard").
//
// Contract: needs a running QGuiApplication. Does nothing before the first puzzle (empty
// List2); otherwise the clipboard is cleared and then holds the board picture of the given mode
// (0 puzzle, 1 solution) as an image and, beside it as plain text, the puzzle's code
// (core/codes/puzzle_code.h), so that a pasted picture can be played again.
#pragma once

#include "core/board/board.h"
#include "output/board_picture.h"

#include <QImage>

namespace tallyon {

void CopyBoardPicture(const Board& board, int mode, const OutputOptions& options);

// Puts the picture on the clipboard, with `text` as plain text beside it when not empty.
// False, with the clipboard untouched, for a null picture or when there is no clipboard.
bool CopyPictureToClipboard(const QImage& picture, const QString& text = QString());

} // namespace tallyon
