#pragma once

// What the rewritten sources of a mutation run call. Every number is the id of one mutant; 0 is
// none. At most one mutant is switched on in a process: the one that SELMAR_MUTANT names.

#include <QLatin1Char>
#include <QLatin1String>
#include <QString>

#include <type_traits>
#include <utility>

namespace mutation {

/// Is this mutant switched on? Notes that the running test came past it.
bool on(int id) noexcept;

template<int WhenOn>
bool flag(bool value) noexcept
{
    return on(WhenOn) ? !value : value;
}

template<int AlwaysTrue, int AlwaysFalse>
bool condition(bool value) noexcept
{
    if (AlwaysTrue && on(AlwaysTrue))
        return true;
    if (AlwaysFalse && on(AlwaysFalse))
        return false;
    return value;
}

template<int Other, int Left, int Right, class Lazy>
bool both(bool left, Lazy right)
{
    if (on(Other))
        return left || right();
    if (on(Left))
        return right();
    if (on(Right))
        return left;
    return left && right();
}

template<int Other, int Left, int Right, class Lazy>
bool either(bool left, Lazy right)
{
    if (on(Other))
        return left && right();
    if (on(Left))
        return right();
    if (on(Right))
        return left;
    return left || right();
}

template<int Dropped, class T>
auto negation(const T &value)
{
    return on(Dropped) ? static_cast<bool>(value) : !static_cast<bool>(value);
}

template<int Dropped, class T>
auto minus(const T &value)
{
    using Result = decltype(-value);
    return on(Dropped) ? static_cast<Result>(value) : -value;
}

#define MUTATION_COMPARISON(name, op, boundary)                                                    \
    template<int Boundary, int Negated, class A, class B>                                          \
    bool name(const A &a, const B &b)                                                              \
    {                                                                                              \
        if (on(Boundary))                                                                          \
            return a boundary b;                                                                   \
        return on(Negated) ? !(a op b) : (a op b);                                                 \
    }
MUTATION_COMPARISON(less, <, <=)
MUTATION_COMPARISON(lessOrEqual, <=, <)
MUTATION_COMPARISON(greater, >, >=)
MUTATION_COMPARISON(greaterOrEqual, >=, >)
#undef MUTATION_COMPARISON

#define MUTATION_EQUALITY(name, op)                                                                \
    template<int Negated, class A, class B>                                                        \
    bool name(const A &a, const B &b)                                                              \
    {                                                                                              \
        return on(Negated) ? !(a op b) : (a op b);                                                 \
    }
MUTATION_EQUALITY(equal, ==)
MUTATION_EQUALITY(unequal, !=)
#undef MUTATION_EQUALITY

#define MUTATION_ARITHMETIC(name, op, other)                                                       \
    template<int Other, class A, class B>                                                          \
    auto name(const A &a, const B &b)                                                              \
    {                                                                                              \
        using Result = std::decay_t<decltype(a op b)>;                                             \
        return on(Other) ? static_cast<Result>(a other b) : static_cast<Result>(a op b);           \
    }
MUTATION_ARITHMETIC(plus, +, -)
MUTATION_ARITHMETIC(difference, -, +)
MUTATION_ARITHMETIC(product, *, /)
MUTATION_ARITHMETIC(quotient, /, *)
MUTATION_ARITHMETIC(remainder, %, *)
MUTATION_ARITHMETIC(bitAnd, &, |)
MUTATION_ARITHMETIC(bitOr, |, &)
#undef MUTATION_ARITHMETIC

template<int Left, int Right, class A, class B>
QString joined(const A &a, const B &b)
{
    if (on(Left))
        return QString(b);
    return on(Right) ? QString(a) : QString(a + b);
}

#define MUTATION_ASSIGNMENT(name, op, other)                                                       \
    template<int Other, class A, class B>                                                          \
    A &name(A &a, const B &b)                                                                      \
    {                                                                                              \
        if (on(Other))                                                                             \
            a other b;                                                                             \
        else                                                                                       \
            a op b;                                                                                \
        return a;                                                                                  \
    }
MUTATION_ASSIGNMENT(addTo, +=, -=)
MUTATION_ASSIGNMENT(takeFrom, -=, +=)
MUTATION_ASSIGNMENT(setBits, |=, &=)
MUTATION_ASSIGNMENT(keepBits, &=, |=)
#undef MUTATION_ASSIGNMENT

template<int Other, class T>
T &incremented(T &value)
{
    return on(Other) ? --value : ++value;
}

template<int Other, class T>
T &decremented(T &value)
{
    return on(Other) ? ++value : --value;
}

template<int OneMore, int OneLess, class T>
T number(T value)
{
    if (on(OneMore))
        return static_cast<T>(value + 1);
    return on(OneLess) ? static_cast<T>(value - 1) : value;
}

/// The enumerator or named number after this one.
template<int Next, class T>
T constant(T value)
{
    if (!on(Next))
        return value;
    if constexpr (std::is_same_v<T, bool>)
        return !value;
    else if constexpr (std::is_enum_v<T>)
        return static_cast<T>(static_cast<std::underlying_type_t<T>>(value) + 1);
    else
        return static_cast<T>(value + 1);
}

template<int Other>
QLatin1Char letter(QLatin1Char value)
{
    return on(Other) ? QLatin1Char('\x7f') : value;
}

template<int Other>
QString text(const QString &value)
{
    return !on(Other) ? value : value.isEmpty() ? QString(QLatin1String("mutant")) : QString();
}

template<int Other>
QLatin1String text(QLatin1String value)
{
    return !on(Other) ? value : value.isEmpty() ? QLatin1String("mutant") : QLatin1String("");
}

} // namespace mutation
