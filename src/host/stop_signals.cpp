#include "host/stop_signals.h"

namespace tandril::host {

StopSignals::StopSignals() {
    ::sigemptyset(&signals_);
    ::sigaddset(&signals_, SIGINT);
    ::sigaddset(&signals_, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &signals_, &before_);
}

StopSignals::~StopSignals() {
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

void StopSignals::wait() {
    int signal = 0;
    ::sigwait(&signals_, &signal);
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

}  // namespace tandril::host
