#ifndef KVSYNC_TESTS_SIMULATOR_UNPRIVILEGED_H
#define KVSYNC_TESTS_SIMULATOR_UNPRIVILEGED_H

#ifndef _WIN32

#include <functional>
#include <string>

/// What the function answers on a thread that has given root's rights up: root reads everything.
std::string unprivileged(const std::function<std::string()> &function);

#endif

#endif
