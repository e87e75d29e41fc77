// Text conversions of the play code: numbers in captions, tags and undo records.
#pragma once

#include <string>
#include <vector>

namespace tallyon {

// The number with a leading blank when it is not negative (" 3"), a minus sign otherwise ("-3").
std::string CaptionNumber(int n);

// The leading number of a text: blanks skipped, an optional sign, then decimal digits; 0 when
// the text does not start with a number ("", "x", "-"). Digits beyond the int range saturate.
int NumberFromText(const std::string& text);

// The pieces of a text between the separators; "" gives one empty piece.
std::vector<std::string> SplitText(const std::string& text, char separator);

} // namespace tallyon
