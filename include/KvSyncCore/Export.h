#ifndef KVSYNCCORE_EXPORT_H
#define KVSYNCCORE_EXPORT_H

#include <QtCore/qglobal.h>

#if defined(KVSYNCCORE_STATIC)
#define KVSYNCCORE_EXPORT
#elif defined(KVSYNCCORE_LIBRARY)
#define KVSYNCCORE_EXPORT Q_DECL_EXPORT
#else
#define KVSYNCCORE_EXPORT Q_DECL_IMPORT
#endif

#endif
