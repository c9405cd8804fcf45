#pragma once

#include <QCoreApplication>
#include <QTranslator>

/// Turns every text of one translation context into "context:text", so that a test sees what passed
/// through tr(), and where. Installed while it lives.
class MarkingTranslator : public QTranslator
{
public:
    explicit MarkingTranslator(const QString &context) : m_context(context)
    {
        QCoreApplication::installTranslator(this);
    }
    ~MarkingTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *sourceText, const char *, int) const override
    {
        if (QString::fromUtf8(context) != m_context)
            return {};
        return m_context + QLatin1Char(':') + QString::fromUtf8(sourceText);
    }

private:
    QString m_context;
};
