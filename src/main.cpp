#include <vector>

#include "cli/Command.h"

int main(int count, char** words) {
    const std::vector<std::string_view> arguments(words + 1, words + count);
    return static_cast<int>(quillform::cli::RunCommand(arguments, quillform::cli::DesktopOfOwnProgram(words)));
}
