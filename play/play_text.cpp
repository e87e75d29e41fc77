// Text conversions of the play code: numbers in captions, tags and undo records.
#include "play/play_text.h"

#include <climits>
#include <cstddef>

namespace tallyon {

std::string CaptionNumber(int n) { return n < 0 ? std::to_string(n) : " " + std::to_string(n); }

int NumberFromText(const std::string& text)
{
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t'))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+'))
        negative = text[i++] == '-';
    long long value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        value = value * 10 + (text[i] - '0');
        if (value > INT_MAX)
            value = INT_MAX;
    }
    return static_cast<int>(negative ? -value : value);
}

std::vector<std::string> SplitText(const std::string& text, char separator)
{
    std::vector<std::string> pieces(1);
    for (char ch : text) {
        if (ch == separator)
            pieces.emplace_back();
        else
            pieces.back() += ch;
    }
    return pieces;
}

} // namespace tallyon
