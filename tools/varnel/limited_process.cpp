#include "tools/varnel/limited_process.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <system_error>

namespace tool {

namespace {

void Confine(const Limits& limits) {
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    if (limits.memory > 0) {
        const rlimit memory{limits.memory, limits.memory};
        setrlimit(RLIMIT_AS, &memory);
    }
    // Ends with its parent, however that one ends.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

/// Waits for the child's end; false when the time is over first.
bool EndsInTime(pid_t child, double seconds) {
    const int handle = static_cast<int>(syscall(SYS_pidfd_open, child, 0));
    if (handle < 0 || seconds <= 0) {
        if (handle >= 0) close(handle);
        return true;  // waitpid waits as long as it takes
    }
    pollfd event{handle, POLLIN, 0};
    const double milliseconds = std::ceil(std::min(seconds * 1000, 2e9));
    const int ready = poll(&event, 1, static_cast<int>(milliseconds));
    close(handle);
    // An interrupted wait (Ctrl-C reaches the child too) ends with the child.
    return ready != 0;
}

}  // namespace

Outcome RunLimited(const Limits& limits, const std::function<int()>& work) {
    std::cerr.flush();
    std::cout.flush();
    const pid_t child = fork();
    if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (child == 0) {
        Confine(limits);
        // No destructors of what the parent still uses.
        const int status = work();
        std::cerr.flush();
        std::cout.flush();
        _exit(status);
    }
    const bool inTime = EndsInTime(child, limits.seconds);
    if (!inTime) kill(child, SIGKILL);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!inTime) return {Outcome::End::OutOfTime, 0};
    if (WIFEXITED(status)) return {Outcome::End::Exited, WEXITSTATUS(status)};
    return {Outcome::End::Killed, WTERMSIG(status)};
}

}  // namespace tool
