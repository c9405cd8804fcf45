#pragma once

#include <QByteArray>
#include <QVector>

#include <optional>
#include <random>

/// Inputs near the seeds, for a run without the fuzzing engine. The same number gives the same
/// inputs on every machine.
class Mutator
{
public:
    /// `seeds` is not empty; `tokens` are texts worth inserting.
    Mutator(quint32 number, const QVector<QByteArray> &seeds, const QVector<QByteArray> &tokens);

    QByteArray next();
    /// The quoted texts of a dictionary of the fuzzing engine; nothing when the engine would not
    /// start with it, since a text has bytes beyond ASCII that are not written as "\xD0".
    static std::optional<QVector<QByteArray>> tokens(const QByteArray &dictionary);

private:
    int below(int bound);
    void mutate(QByteArray &input);

    std::mt19937 m_random;
    QVector<QByteArray> m_seeds;
    QVector<QByteArray> m_tokens;
};
