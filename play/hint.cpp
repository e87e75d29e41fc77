// The hint key H: the next deduction, or a wrong link or mark, over the board while H is held.
#include "play/hint.h"

#include "play/draw.h"

namespace tallyon {
namespace {

// Hints that help the player on: all but the word that the path is complete.
bool Counted(HintKind kind) { return kind != HintKind::None && kind != HintKind::Solved; }

bool Wrong(HintKind kind) { return kind == HintKind::WrongLink || kind == HintKind::WrongMark; }

} // namespace

std::string HintStatus(const Hint& hint, int count, HintStage stage)
{
    const std::string& words = stage == HintStage::First ? hint.first : hint.second;
    if (!Counted(hint.kind))
        return words;
    return "Hint " + std::to_string(count) + ": " + words;
}

HintPicture HintPictureOf(const Hint& hint, HintStage stage)
{
    HintPicture picture;
    if (!Counted(hint.kind))
        return picture;
    picture.look = hint.look;
    if (Wrong(hint.kind)) {
        picture.wrong = hint.link;
        return picture;
    }
    if (stage == HintStage::Second) {
        picture.ruledOut = hint.ruledOut;
        picture.forced = hint.link;
    }
    return picture;
}

void HintPress(PlayHost& host, const Board& board, PlayState& state)
{
    if (board.List2.empty())
        return;
    const Hint hint = FindHint(board);
    if (hint.kind == HintKind::None)
        return;
    const HintStage stage = state.HintNext;
    if (stage == HintStage::First && Counted(hint.kind)) {
        ++state.HintCount;
        state.HintCountUnkept = true;
    }
    if (!state.HintShown)
        state.StatusBeforeHint = host.Status();
    state.HintShown = true;
    state.HintNext = HintStage::Second;
    host.ClearOverlay();
    DrawHint(*host.OpenOverlayCanvas(), board, host.Style(), HintPictureOf(hint, stage));
    host.SetStatus(HintStatus(hint, state.HintCount, stage));
}

void HintRelease(PlayHost& host, PlayState& state)
{
    if (!state.HintShown)
        return;
    state.HintShown = false;
    host.ClearOverlay();
    host.SetStatus(state.StatusBeforeHint);
    if (state.HintCountUnkept) {
        state.HintCountUnkept = false;
        host.GameChanged();
    }
}

void ForgetHint(PlayHost& host, PlayState& state)
{
    state.HintNext = HintStage::First;
    if (!state.HintShown)
        return;
    state.HintShown = false;
    host.ClearOverlay();
}

} // namespace tallyon
