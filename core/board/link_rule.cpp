// The arithmetic link rule and the small digit routines built on it.
#include "core/board/link_rule.h"

#include "core/board/random.h"

#include <array>

namespace tallyon {

int RandomDigit() { return RandomInt(9, 1); }

namespace {

// The drawn operation; sets c only when it fits.
int TryOperation(const std::string& op, int a, int b)
{
    int c = -1;
    if (op == "+") {
        if (a + b <= 9 && a + b >= 1)
            c = a + b;
    } else if (op == "-") {
        if (a > b)
            c = a - b;
        if (b > a)
            c = b - a;
    } else if (op == "*") {
        if (a * b <= 9 && a * b > 0)
            c = a * b;
    } else if (op == "/") {
        if (a >= b && a % b == 0)
            c = a / b;
        if (b >= a && b % a == 0)
            c = b / a;
    }
    return c;
}

// The first operation that fits, in the fixed fallback order.
MadeResult Fallback(int a, int b)
{
    MadeResult r;
    if (a + b >= 1 && a + b <= 9) {
        r.c = a + b;
        r.op = "+";
    } else if (b < a) {
        r.c = a - b;
        r.op = "-";
    } else if (a < b) {
        r.c = b - a;
        r.op = "-";
    } else if (a * b < 10) {
        r.c = a * b;
        r.op = "*";
    } else if (a == b) {
        r.c = 1;
        r.op = "/";
    } else {
        r.c = -1;
        r.failed = true;
    }
    return r;
}

} // namespace

MadeResult MakeResult(int a, int b)
{
    MadeResult r;
    if (a == 0 || b == 0) {
        r.failed = true;
        return r;
    }
    static const std::array<const char*, 7> ops = {"", "+", "-", "/", "*", "+", "-"};
    LetPendingEventsRun();
    const int k = RandomInt(6, 1);
    r.op = ops[static_cast<std::size_t>(k)];
    r.c = TryOperation(r.op, a, b);
    if (r.c == -1)
        r = Fallback(a, b);
    return r;
}

int SuggestResult(int a, int b)
{
    if (a == b)
        return 1;
    if (a + b >= 1 && a + b <= 9)
        return a + b;
    if (a - b > 0)
        return a - b;
    if (b - a > 0)
        return b - a;
    if (a * b >= 1 && a * b <= 9)
        return a * b;
    return -1;
}

std::string FormatNumber(int n) { return std::to_string(n); }

namespace {

bool QuotientIsAsVerified(int n, int d, int c)
{
    if (d == 0)
        return n == 0;
    return static_cast<double>(n) / static_cast<double>(d) == static_cast<double>(c);
}

} // namespace

bool IsValidTripleAsVerified(int a, int b, int c)
{
    return (a == b && c == 1) || a + b == c || a - b == c || b - a == c || a * b == c ||
           QuotientIsAsVerified(a, b, c) || QuotientIsAsVerified(b, a, c);
}

bool IsValidTriple(int a, int b, int c)
{
    if (a == b && c == 1)
        return true;
    if (a + b == c || a - b == c || b - a == c || a * b == c)
        return true;
    if (b != 0 && static_cast<double>(a) / b == c)
        return true;
    return a != 0 && static_cast<double>(b) / a == c;
}

} // namespace tallyon
