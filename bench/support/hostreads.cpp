// What the plugin reads from the host's database for every receipt, answered at once: the database
// is the host's, and what it takes would hide what the plugin does. The program's own definitions
// stand before those of the host's library.
#include <molvacore/appsession.h>
#include <molvacore/frsettings.h>
#include <molvacore/userscontroller.h>

FrSettings::FrSettings()
    : m_cashboxInn(QStringLiteral("7701000001")),
      m_cashboxRegNumber(QStringLiteral("0000000001012345"))
{
}

bool UsersController::getUserFullName(const AppSession &, QString &name)
{
    name = QStringLiteral("Кузнецова Мария Петровна");
    return true;
}
