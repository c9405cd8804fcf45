#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <functional>

class TerminalContext;

/// One payment made without a window: the calls that a plugin's payment page makes, in its order,
/// through the interfaces that a plugin is given.
///
/// After each step that the cashier may rely on, a line says so: what it says
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

    using Teller = std::function<void(const QByteArray &line)>;

    /// Lines go to `teller`, or to the standard output without one.
    StationPayment(TerminalContext &context, const Plan &plan, Teller teller = {});

    /// False when a step was refused; the lines on the standard output say which.
    bool make();

private:
    void tell(const char *what, const QString &which);
    bool charge();
    bool print();
    bool save();
    void post();

    TerminalContext &m_context;
    Plan m_plan;
    Teller m_teller;
    QVariantMap m_result;
    qint64 m_packId = 0;
};
