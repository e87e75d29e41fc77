// The arithmetic rule of a link: node digit a, link-cell digit b, node digit c.
//
// A triple is valid when a = b and c = 1, a + b = c, a - b = c, b - a = c, a * b = c,
// a / b = c or b / a = c (division exact, in floating point). The rule is symmetric:
// (a, b, c) is valid exactly when (c, b, a) is.
#pragma once

#include <string>

namespace tallyon {

// A digit 1..9, each equally likely; reseeds from the clock first.
int RandomDigit();

struct MadeResult {
    int c = -1;     // the digit for the next node (left unchanged, -1, on failure)
    std::string op; // "+", "-", "*" or "/"
    bool failed = false;
};

// Picks an operation at random ("+" and "-" twice as likely as "*" and "/") and computes the
// next node's digit from a and b, falling back to the first operation that fits. Fails only
// when a or b is 0.
MadeResult MakeResult(int a, int b);

// A fixed third digit for a and b: 1 when equal, else the sum, the difference, or the
// product if it is a digit; -1 when none is. The game itself no longer calls it, as Verify
// judges links and never repairs them; it stays as the rule's one non-random completion, its
// order pinned by tests, for tools that need the same answer every time.
int SuggestResult(int a, int b);

// The number in decimal, without blanks.
std::string FormatNumber(int n);

// The link rule has two readings, which differ only where a divisor is 0, a digit no built
// puzzle holds, so only a damaged or hand-made board tells them apart.
//
// The generator's reading: a division by 0 never holds.
bool IsValidTriple(int a, int b, int c);
// Verify's reading, in which the quotient is compared as floating point does it: n / 0 is
// infinite and never equal, but 0 / 0 counts as equal to any c, so (0, 0, c) always holds.
bool IsValidTripleAsVerified(int a, int b, int c);

} // namespace tallyon
