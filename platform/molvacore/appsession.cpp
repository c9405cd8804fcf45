#include <molvacore/appsession.h>

#include <atomic>

namespace {

std::atomic<qint64> currentUser{0};

} // namespace

AppSession::AppSession(qint64 userId) : m_userId(userId) {}

AppSession AppSession::currentSession()
{
    return AppSession(currentUser);
}

void AppSession::setCurrentSession(const AppSession &session)
{
    currentUser = session.userId();
}
