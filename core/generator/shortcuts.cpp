// The shortcuts open so far, and the crossing test.
#include "core/generator/shortcuts.h"

#include <algorithm>

namespace tallyon {

void Shortcuts::Add(int i, int j) { joined_.emplace_back(std::min(i, j), std::max(i, j)); }

bool Shortcuts::Crosses(int i, int j) const
{
    const int lo = std::min(i, j), hi = std::max(i, j);
    return std::any_of(joined_.begin(), joined_.end(), [&](const std::pair<int, int>& s) {
        return (s.first < lo && s.second < hi) || (lo < s.first && hi < s.second);
    });
}

} // namespace tallyon
