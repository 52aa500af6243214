#include "support/child_process.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

#include "platform/fault.h"

namespace tandril::test {
namespace {

constexpr uid_t nobody = 65534;

bool suffer(const Hardship& hardship) {
    if (hardship.fileSizeLimit >= 0) {
        const rlimit limit{static_cast<rlim_t>(hardship.fileSizeLimit),
                           static_cast<rlim_t>(hardship.fileSizeLimit)};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return false;
        ::signal(SIGXFSZ, hardship.killedAtLimit ? SIG_DFL : SIG_IGN);
    }
    if (hardship.killedAtLimit) {
        const rlimit noCore{0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
    }
    return !hardship.ordinaryUser || ::geteuid() != 0 || ::setuid(nobody) == 0;
}

}  // namespace

pid_t startInChild(const Hardship& hardship, const std::function<int()>& action) {
    const pid_t child = ::fork();
    if (child < 0) throw std::runtime_error("fork failed");
    if (child > 0) return child;
    // _exit(): what the test holds is the parent's to clean up.
    try {
        ::_exit(suffer(hardship) ? action() : 98);
    } catch (const Fault&) {
        ::_exit(endedByFault);
    } catch (...) {
        ::_exit(97);
    }
}

ChildEnd waitFor(pid_t child) {
    int status = 0;
    if (::waitpid(child, &status, 0) != child) throw std::runtime_error("waitpid failed");
    if (WIFSIGNALED(status)) return {-1, WTERMSIG(status)};
    return {WEXITSTATUS(status), 0};
}

}  // namespace tandril::test
