#ifndef KVSYNCCORE_GLOGCHANNEL_H
#define KVSYNCCORE_GLOGCHANNEL_H

// The only place that knows glog. The host owns its initialisation: a second one would abort it.
#ifndef GLOG_NO_ABBREVIATED_SEVERITIES
#define GLOG_NO_ABBREVIATED_SEVERITIES
#endif
#include <glog/logging.h>

#define KVSYNC_GLOG_INFO google::LogMessage(__FILE__, __LINE__).stream()
#define KVSYNC_GLOG_ERROR google::LogMessage(__FILE__, __LINE__, google::GLOG_ERROR).stream()

#endif
