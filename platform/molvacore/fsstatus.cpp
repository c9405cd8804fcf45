#include <molvacore/fsstatus.h>

FsStatus::FsStatus(bool readyForReceipts) : m_readyForReceipts(readyForReceipts) {}
