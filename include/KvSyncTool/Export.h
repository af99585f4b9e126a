#ifndef KVSYNCTOOL_EXPORT_H
#define KVSYNCTOOL_EXPORT_H

#include <QtCore/qglobal.h>

#if defined(KVSYNCTOOL_LIBRARY)
#define KVSYNCTOOL_EXPORT Q_DECL_EXPORT
#else
#define KVSYNCTOOL_EXPORT Q_DECL_IMPORT
#endif

#endif
