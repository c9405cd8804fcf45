#pragma once

#include <QtGlobal>

#if defined(MOLVACORE_LIBRARY)
#define MOLVACORE_EXPORT Q_DECL_EXPORT
#else
#define MOLVACORE_EXPORT Q_DECL_IMPORT
#endif
