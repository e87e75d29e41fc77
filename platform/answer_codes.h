// The answer codes of the program's message box, shared by the play code (through
// PlayHost::Ask) and the windows that ask the player.
#pragma once

namespace tallyon {

inline constexpr int kAnswerNone = 0; // an Ok that answers nothing ("vbnormal")
inline constexpr int kAnswerOk = 1;
inline constexpr int kAnswerCancel = 2;
inline constexpr int kAnswerAbort = 3;
inline constexpr int kAnswerRetry = 4;
inline constexpr int kAnswerIgnore = 5;
inline constexpr int kAnswerYes = 6; // Yes, and Continue
inline constexpr int kAnswerNo = 7;

} // namespace tallyon
