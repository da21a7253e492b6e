#include "cli/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

namespace quillform::cli {

void HoldStandardStreams() {
    // Opening takes the lowest free place, so they are filled in their order.
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (fcntl(stream, F_GETFD) < 0) static_cast<void>(open("/dev/null", O_RDONLY));
}

}  // namespace quillform::cli
