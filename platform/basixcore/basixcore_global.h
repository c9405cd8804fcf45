#pragma once

#include <QtGlobal>

#if defined(BASIXCORE_LIBRARY)
#define BASIXCORE_EXPORT Q_DECL_EXPORT
#else
#define BASIXCORE_EXPORT Q_DECL_IMPORT
#endif
