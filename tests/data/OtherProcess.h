#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace quillform {

/// From now on this process is somebody without special rights, if it was somebody with them; false if that can't be.
inline bool LoseRights() {
    constexpr uid_t nobody = 65534;
    return ::geteuid() != 0 || ::setuid(nobody) == 0;
}

/// Runs in a process of its own, with `withoutRights` as somebody without special rights; gives its exit code, and -1
/// for one that died.
inline int InOtherProcess(const std::function<int()>& work, bool withoutRights = false) {
    const pid_t child = ::fork();
    if (child == 0) {
        if (withoutRights && !LoseRights()) ::_exit(98);
        int code = 99;
        try {
            code = work();
        } catch (...) {
        }
        ::_exit(code);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// A process that does its work and stays as it is then, until this object goes.
class WaitingProcess {
public:
    /// Returns when `work` is done; `work` gives what must be kept till the end.
    template <class Work>
    explicit WaitingProcess(Work work) {
        int ready[2], end[2];
        if (::pipe(ready) != 0 || ::pipe(end) != 0) return;
        child_ = ::fork();
        char byte = 0;
        if (child_ == 0) {
            ::close(end[1]);
            try {
                const auto kept = work();
                static_cast<void>(::write(ready[1], &byte, 1) + ::read(end[0], &byte, 1));
            } catch (...) {
            }
            ::_exit(0);
        }
        ::close(ready[1]);
        ::close(end[0]);
        isReady_ = ::read(ready[0], &byte, 1) == 1;
        ::close(ready[0]);
        end_ = end[1];
    }
    ~WaitingProcess() {
        ::close(end_);
        ::waitpid(child_, nullptr, 0);
    }
    WaitingProcess(const WaitingProcess&) = delete;
    WaitingProcess& operator=(const WaitingProcess&) = delete;

    bool IsReady() const { return isReady_; }

private:
    pid_t child_ = -1;
    int end_ = -1;
    bool isReady_ = false;
};

}  // namespace quillform
