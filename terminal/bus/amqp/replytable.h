#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariantMap>
#include <QVector>
#include <QtGlobal>

#include <optional>

/// Which answers this terminal waits for.
///
/// Every message that asks for one has a correlation id; the first answer with it is taken, and
/// every other one is not ours. An answer may overtake the broker's confirm of what it answers: it
/// is held until that confirm, so that nobody hears the answer to a message that may yet be
/// refused.
class ReplyTable final
{
public:
    /// An answer to a request is of use to nobody after this.
    static constexpr qint64 REQUEST_LIFE_MS = 300000;

    struct Answer
    {
        QVariantMap headers;
        QByteArray body;
    };
    enum class Kind { Request, Pack };

    /// Answers with the correlation id to send: `name`, or one made from it when that is taken.
    QString expect(Kind kind, const QString &name, quint64 token, qint64 now);
    bool isExpected(Kind kind, const QString &correlationId) const;
    /// Nothing when the answer is held. It must be expected.
    std::optional<Answer> take(const QString &correlationId, const Answer &answer);
    /// The broker has message `token`; answers with what was held for it.
    std::optional<Answer> confirmed(quint64 token);
    void forget(quint64 token);
    /// Addresses of a connection end with it, and so does everything that was to come to them.
    void clear();
    void dropOld(qint64 now);
    int size() const { return m_expected.size(); }

private:
    struct Entry
    {
        Kind kind = Kind::Request;
        quint64 token = 0;
        qint64 since = 0;
        bool confirmed = false;
        std::optional<Answer> held;
    };

    QHash<QString, Entry> m_expected;
    QHash<quint64, QString> m_names;
};
