#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "endtoend/Support.h"

namespace endtoend {

/// A print service of the test's own, on a socket in a scratch folder, to which the programs that the test starts turn
/// while it lives. What arrives at its printers is caught in files. Printers: "Office" (the default), "Stopped", whose
/// jobs wait, and "Closed", which takes none.
class PrintScheduler {
public:
    enum class Default { Office, None };
    explicit PrintScheduler(Default isDefault = Default::Office);
    ~PrintScheduler();
    PrintScheduler(const PrintScheduler&) = delete;
    PrintScheduler& operator=(const PrintScheduler&) = delete;

    /// Whether this machine has the program that it runs.
    static bool IsInstalled();
    bool IsRunning() const { return process_ > 0; }

    struct Job {
        std::string title;
        std::string copies;
        std::string options;  ///< "media=... orientation-requested=..."
        std::string document;
    };
    /// A job as the printer gets it, by its number; waits for it, and is empty if it doesn't come.
    Job Printed(int number) const;
    /// The documents that wait in the queues or were printed.
    std::size_t Received() const;

private:
    void WriteConfiguration(Default isDefault);
    void WriteBackend();

    ScratchFolder folder_;
    pid_t process_ = 0;
};

}  // namespace endtoend
