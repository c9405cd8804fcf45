#pragma once

#include <QString>
#include <QVariantMap>

class TerminalContext;

/// One payment made without a window: the calls that a plugin's payment page makes, in its order,
/// through the interfaces that a plugin is given.
///
/// After each step that the cashier may rely on, a line goes to the standard output: what it says
/// must be true whatever happens to the process from then on.
class StationPayment final
{
public:
    struct Plan
    {
        QString account;
        qint64 cash = 0;
        qint64 card = 0;
        /// The register prints and its answer is lost; the cashier presses the button again.
        bool answerLost = false;
    };

    StationPayment(TerminalContext &context, const Plan &plan);

    /// False when a step was refused; the lines on the standard output say which.
    bool make();

private:
    bool charge();
    bool print();
    bool save();
    void post();

    TerminalContext &m_context;
    Plan m_plan;
    QVariantMap m_result;
    qint64 m_packId = 0;
};
