#include "actingcharacters.h"

#include <QStringList>

QString actingCharacters(const QString &text, const QString &allowed)
{
    QStringList found;
    for (const QChar c : text) {
        const bool acts =
            c.category() == QChar::Other_Format || c.category() == QChar::Other_Control;
        if (acts && !allowed.contains(c))
            found.append(QString::number(c.unicode(), 16));
    }
    return found.join(QLatin1Char(' '));
}
