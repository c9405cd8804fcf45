#include "temporaryterminal.h"

bool TemporaryTerminal::open()
{
    close();
    m_folder = std::make_unique<QTemporaryDir>();
    return reopen();
}

bool TemporaryTerminal::reopen()
{
    close();
    m_error.clear();
    m_context = TerminalContext::open(m_folder->path(), &m_error);
    return m_context != nullptr;
}
