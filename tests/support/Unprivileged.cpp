#include "Unprivileged.h"

#ifndef _WIN32

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <thread>

std::string unprivileged(const std::function<std::string()> &function)
{
    std::string answer = "cannot become an unprivileged user";
    // Capabilities are each thread's own, so these go with the thread.
    std::thread([&] {
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        const __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3] = {};
        if (syscall(SYS_capset, &header, none) == 0)
            answer = function();
    }).join();
    return answer;
}

#endif
