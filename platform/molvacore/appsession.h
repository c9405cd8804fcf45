#pragma once

#include <molvacore/molvacore_global.h>

#include <QMetaType>

/// Who works at the box. The process has one current session, at first that of nobody; it is not
/// stored.
class MOLVACORE_EXPORT AppSession
{
public:
    AppSession() = default;
    explicit AppSession(qint64 userId);

    static AppSession currentSession();
    static void setCurrentSession(const AppSession &session);

    /// Somebody is logged in.
    bool isValid() const { return m_userId > 0; }
    qint64 userId() const { return m_userId; }
    void setUserId(qint64 userId) { m_userId = userId; }

    friend bool operator==(const AppSession &a, const AppSession &b)
    {
        return a.m_userId == b.m_userId;
    }
    friend bool operator!=(const AppSession &a, const AppSession &b) { return !(a == b); }

private:
    qint64 m_userId = 0;
};

Q_DECLARE_METATYPE(AppSession)
