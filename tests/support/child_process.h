#pragma once

#include <sys/types.h>

#include <functional>

namespace tandril::test {

// What a process of its own needs to behave worse than the test itself may.
struct Hardship {
    long fileSizeLimit = -1;     // bytes a file may have (-1: any), standing in for a full disk
    bool killedAtLimit = false;  // the write that passes the limit kills, instead of failing
    bool ordinaryUser = false;   // without the rights of the administrator
};

// How the process ended.
struct ChildEnd {
    int exitStatus = -1;  // of `action`; 99 when a Fault ended it; -1 when a signal did
    int signal = 0;
};
inline constexpr int endedByFault = 99;

// Starts `action` in a process of its own and returns at once; waitFor() waits for its end.
pid_t startInChild(const Hardship& hardship, const std::function<int()>& action);
ChildEnd waitFor(pid_t child);

inline ChildEnd runInChild(const Hardship& hardship, const std::function<int()>& action) {
    return waitFor(startInChild(hardship, action));
}

}  // namespace tandril::test
