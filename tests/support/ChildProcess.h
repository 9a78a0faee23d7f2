#pragma once

#include <functional>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

constexpr uid_t kOtherUser = 65534;

// Gives up root's rights for good. True when the process has none, now or before.
inline bool becomeOtherUser()
{
    return geteuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(kOtherUser) == 0 && setuid(kOtherUser) == 0);
}

// Runs work in a process of its own; true when it gave true there.
inline bool trueInChild(const std::function<bool()>& work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work() ? 0 : 1);
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
}

// The same in a process without root's rights.
inline bool trueAsOtherUser(const std::function<bool()>& work)
{
    return trueInChild([&] { return becomeOtherUser() && work(); });
}
