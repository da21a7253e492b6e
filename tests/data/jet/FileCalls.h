#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace quillform::test {

/// A call by which this process changes files.
struct FileCall {
    enum class Kind { Create, Write, Resize, Sync, Remove, Rename };
    Kind kind = Kind::Sync;
    std::string path;
    std::string newPath;       ///< Rename
    std::uint64_t offset = 0;  ///< Write; the size for Resize
    std::string bytes;         ///< Write
};

/// From now on nothing in this process waits for the disk, which no test here can lose.
void NeverWaitForTheDisk();

/// The calls that a piece of work makes.
std::vector<FileCall> RecordCalls(const std::function<void()>& work);

/// Exit code of a process that died at a call.
inline constexpr int diedAtCall = 77;

/// This process ends at its call number `number`, counted from 0 and from now on: before it, or when it is done, of a
/// write half.
void DieAtCall(std::size_t number, bool isHalfDone);

using Files = std::map<std::string, std::string>;  // content by path

/// What a disk holds when the power fails after `count` of the calls: what was waited for, and any of the rest. Writes
/// are kept or lost by 512 bytes.
Files AfterPowerLoss(const Files& before, const std::vector<FileCall>& calls, std::size_t count, std::mt19937& random);

}  // namespace quillform::test
