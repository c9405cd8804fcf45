// What the self-test of the mutation script changes. Each function's comment says what must become
// of its mutants.
#include "toy.h"

#include <vector>

int toyCalls = 0;

void toyNote()
{
    ++toyCalls;
}

// Both comparisons are noticed: the test has a pair below, a pair equal and a pair above.
bool toyAbove(int a, int b)
{
    return a > b;
}

// "and" for "or" and either side alone are noticed.
bool toyEither(bool a, bool b)
{
    return a || b;
}

// The boundary is not tested: ">=" must survive, "<=" must not.
int toyCapped(int value)
{
    if (value > 10)
        return 10;
    return value;
}

// Nobody looks whether the note was made: the removed call must survive.
int toyDouble(int value)
{
    toyNote();
    return value + value;
}

// No test comes here.
int toyUnused()
{
    return 7;
}

// The first test that calls it does not look at the value which is made there and then.
int toyOnce()
{
    static const std::vector<int> kept{4};
    return kept.front();
}

// No mutant changes how much memory is set aside.
std::size_t toyRoom(std::vector<int> &values)
{
    values.reserve(values.size() + 3);
    return values.size();
}
