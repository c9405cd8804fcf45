#include "mutator.h"

#include <QList>

#include <algorithm>

namespace {

constexpr int longestInput = 1 << 16;

} // namespace

Mutator::Mutator(quint32 number, const QVector<QByteArray> &seeds,
                 const QVector<QByteArray> &tokens)
    : m_random(number), m_seeds(seeds), m_tokens(tokens)
{
}

// Not a distribution of the standard library: those differ between its implementations.
int Mutator::below(int bound)
{
    return static_cast<int>(m_random() % static_cast<quint32>(bound));
}

QByteArray Mutator::next()
{
    QByteArray input = m_seeds.at(below(m_seeds.size()));
    const int steps = 1 + below(4);
    for (int i = 0; i < steps; ++i)
        mutate(input);
    return input.left(longestInput);
}

void Mutator::mutate(QByteArray &input)
{
    enum Kind {
        FlipBit,
        SetByte,
        Erase,
        Repeat,
        InsertToken,
        ReplaceToken,
        Splice,
        Digit,
        KindCount
    };
    const int at = input.isEmpty() ? 0 : below(input.size());
    const int length = input.isEmpty() ? 0 : 1 + below(qMin(input.size() - at, 32));
    switch (static_cast<Kind>(below(KindCount))) {
    case FlipBit:
        if (!input.isEmpty())
            input[at] = static_cast<char>(input.at(at) ^ (1 << below(8)));
        break;
    case SetByte:
        if (!input.isEmpty())
            input[at] = static_cast<char>(below(256));
        break;
    case Erase:
        input.remove(at, length);
        break;
    case Repeat:
        input.insert(at, input.mid(at, length));
        break;
    case InsertToken:
        if (!m_tokens.isEmpty())
            input.insert(at, m_tokens.at(below(m_tokens.size())));
        break;
    case ReplaceToken:
        if (!m_tokens.isEmpty())
            input.replace(at, length, m_tokens.at(below(m_tokens.size())));
        break;
    case Splice: {
        const QByteArray &other = m_seeds.at(below(m_seeds.size()));
        input = input.left(at) + other.mid(other.isEmpty() ? 0 : below(other.size()));
        break;
    }
    case Digit: {
        int found = at;
        while (found < input.size() && (input.at(found) < '0' || input.at(found) > '9'))
            ++found;
        if (found < input.size())
            input[found] = static_cast<char>('0' + below(10));
        break;
    }
    case KindCount:
        break;
    }
}

std::optional<QVector<QByteArray>> Mutator::tokens(const QByteArray &dictionary)
{
    constexpr auto isPlain = [](char c) { return c >= ' ' && c <= '~'; };
    QVector<QByteArray> found;
    const QList<QByteArray> lines = dictionary.split('\n');
    for (const QByteArray &line : lines) {
        const int first = line.indexOf('"');
        const int last = line.lastIndexOf('"');
        if (line.startsWith('#') || first < 0 || last <= first)
            continue;
        if (!std::all_of(line.cbegin(), line.cend(), isPlain))
            return std::nullopt;
        QByteArray token;
        for (int i = first + 1; i < last; ++i) {
            if (line.at(i) != '\\') {
                token.append(line.at(i));
            } else if (line.at(i + 1) == 'x') {
                token.append(QByteArray::fromHex(line.mid(i + 2, 2)));
                i += 3;
            } else {
                token.append(line.at(++i));
            }
        }
        found.append(token);
    }
    return found;
}
