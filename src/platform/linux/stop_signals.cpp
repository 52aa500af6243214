#include "platform/stop_signals.h"

#include <csignal>

namespace tandril::platform {

struct StopSignals::State {
    sigset_t signals{};
    sigset_t before{};
};

StopSignals::StopSignals() : state_(std::make_unique<State>()) {
    ::sigemptyset(&state_->signals);
    ::sigaddset(&state_->signals, SIGINT);
    ::sigaddset(&state_->signals, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &state_->signals, &state_->before);
}

StopSignals::~StopSignals() {
    ::pthread_sigmask(SIG_SETMASK, &state_->before, nullptr);
}

void StopSignals::wait() {
    int signal = 0;
    ::sigwait(&state_->signals, &signal);
    ::pthread_sigmask(SIG_SETMASK, &state_->before, nullptr);
}

}  // namespace tandril::platform
