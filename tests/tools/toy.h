#pragma once

// Only the test calls it: its mutants must be noticed all the same.
inline int toyInline()
{
    return 5;
}
