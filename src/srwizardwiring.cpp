#include "srwizardwiring.h"

namespace SrHostWiring {

bool connectFromHost(QObject *host, const char *hostSignal, QObject *wizard,
                     const char *wizardSignal)
{
    return host && QObject::connect(host, hostSignal, wizard, wizardSignal);
}

bool connectToHost(QObject *wizard, const char *wizardSignal, QObject *host, const char *hostMember)
{
    return host && QObject::connect(wizard, wizardSignal, host, hostMember);
}

} // namespace SrHostWiring
