#include "srdecimalinput.h"

#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QValidator>

namespace {

/// Writes the language's own decimal sign for either of the two, and leaves the rest to the spin
/// box.
class DecimalSigns final : public QValidator
{
public:
    DecimalSigns(const QDoubleSpinBox *amount, const QValidator *rest, QObject *parent)
        : QValidator(parent), m_amount(amount), m_rest(rest)
    {
    }

    State validate(QString &input, int &cursor) const override
    {
        // The unit behind the number has signs of its own.
        const QString unit = m_amount->suffix();
        const int end = input.size() - (input.endsWith(unit) ? unit.size() : 0);
        for (int i = 0; i < end; ++i) {
            if (input.at(i) == QLatin1Char('.') || input.at(i) == QLatin1Char(','))
                input[i] = m_amount->locale().decimalPoint();
        }
        return m_rest->validate(input, cursor);
    }

    void fixup(QString &input) const override { m_rest->fixup(input); }

private:
    const QDoubleSpinBox *m_amount;
    const QValidator *m_rest; ///< the spin box's own, which it keeps as long as its line edit
};

} // namespace

void srAcceptBothDecimalSigns(QDoubleSpinBox *amount)
{
    auto *line = amount->findChild<QLineEdit *>();
    line->setValidator(new DecimalSigns(amount, line->validator(), line));
}
