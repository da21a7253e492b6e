#include "data/jet/FileCalls.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <optional>

namespace quillform::test {

namespace {

/// What the functions below, which stand before those of the C library, do beside the call itself.
struct Watch {
    std::vector<FileCall>* record = nullptr;
    std::optional<std::size_t> deathIn{};
    bool isHalfDone = false;
    bool neverWaits = false;

    bool IsOn() const { return record || deathIn; }
};

Watch& TheWatch() {
    static Watch watch;
    return watch;
}

std::string PathOf(int descriptor) {
    std::array<char, 4096> path;
    const ssize_t length =
        ::readlink(("/proc/self/fd/" + std::to_string(descriptor)).c_str(), path.data(), path.size());
    return length < 0 ? std::string() : std::string(path.data(), static_cast<std::size_t>(length));
}

/// Notes a call, or ends the process at it. `done` does the call; `half` what a process leaves of it that dies.
template <typename Done, typename Half>
auto Pass(FileCall call, Done done, Half half) {
    Watch& watch = TheWatch();
    if (watch.deathIn && (*watch.deathIn)-- == 0) {
        if (watch.isHalfDone) half();
        ::_exit(diedAtCall);
    }
    if (watch.record) watch.record->push_back(std::move(call));
    return done();
}

template <typename Done>
auto Pass(FileCall call, Done done) {
    return Pass(std::move(call), done, done);
}

int RemoveNow(const char* path) {
    const auto at = static_cast<long>(AT_FDCWD);
    if (::syscall(SYS_unlinkat, at, path, 0L) == 0) return 0;
    if (errno != EISDIR) return -1;
    return static_cast<int>(::syscall(SYS_unlinkat, at, path, static_cast<long>(AT_REMOVEDIR)));
}

int RenameNow(int fromAt, const char* from, int toAt, const char* to, unsigned flags) {
    return static_cast<int>(::syscall(SYS_renameat2, static_cast<long>(fromAt), from, static_cast<long>(toAt), to,
                                      static_cast<unsigned long>(flags)));
}

}  // namespace

}  // namespace quillform::test

// The calls of the program under test end here instead of in the C library.
extern "C" {

using quillform::test::FileCall;

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = static_cast<long>((flags & O_CREAT) != 0 ? va_arg(arguments, unsigned) : 0u);
    va_end(arguments);
    const auto now = [&] {
        return static_cast<int>(
            ::syscall(SYS_openat, static_cast<long>(AT_FDCWD), path, static_cast<long>(flags), mode));
    };
    if ((flags & O_CREAT) == 0 || !quillform::test::TheWatch().IsOn()) return now();
    return quillform::test::Pass({.kind = FileCall::Kind::Create, .path = path, .newPath = {}, .bytes = {}}, now);
}

ssize_t pwrite(int file, const void* data, std::size_t size, off_t offset) {
    const auto put = [&](std::size_t count) {
        return static_cast<ssize_t>(::syscall(SYS_pwrite64, static_cast<long>(file), data, count, offset));
    };
    if (!quillform::test::TheWatch().IsOn()) return put(size);
    const auto half = [&] { put(size / 1024 * 512); };
    return quillform::test::Pass(
        {.kind = FileCall::Kind::Write,
         .path = quillform::test::PathOf(file),
         .newPath = {},
         .offset = static_cast<std::uint64_t>(offset),
         .bytes = std::string(static_cast<const char*>(data), size)},
        [&] { return put(size); }, half);
}

int ftruncate(int file, off_t size) noexcept {
    const auto now = [&] { return static_cast<int>(::syscall(SYS_ftruncate, static_cast<long>(file), size)); };
    if (!quillform::test::TheWatch().IsOn()) return now();
    return quillform::test::Pass({.kind = FileCall::Kind::Resize,
                                  .path = quillform::test::PathOf(file),
                                  .newPath = {},
                                  .offset = static_cast<std::uint64_t>(size),
                                  .bytes = {}},
                                 now);
}

int fsync(int file) {
    const auto now = [&] {
        const bool waits = !quillform::test::TheWatch().neverWaits;
        return waits ? static_cast<int>(::syscall(SYS_fsync, static_cast<long>(file))) : 0;
    };
    if (!quillform::test::TheWatch().IsOn()) return now();
    return quillform::test::Pass(
        {.kind = FileCall::Kind::Sync, .path = quillform::test::PathOf(file), .newPath = {}, .bytes = {}}, now);
}

int remove(const char* path) noexcept {
    const auto now = [&] { return quillform::test::RemoveNow(path); };
    if (!quillform::test::TheWatch().IsOn()) return now();
    return quillform::test::Pass({.kind = FileCall::Kind::Remove, .path = path, .newPath = {}, .bytes = {}}, now);
}

int unlink(const char* path) noexcept { return remove(path); }

int renameat2(int fromAt, const char* from, int toAt, const char* to, unsigned flags) noexcept {
    const auto now = [&] { return quillform::test::RenameNow(fromAt, from, toAt, to, flags); };
    if (!quillform::test::TheWatch().IsOn()) return now();
    return quillform::test::Pass({.kind = FileCall::Kind::Rename, .path = from, .newPath = to, .bytes = {}}, now);
}

int rename(const char* from, const char* to) noexcept { return renameat2(AT_FDCWD, from, AT_FDCWD, to, 0); }

}  // extern "C"

namespace quillform::test {

void NeverWaitForTheDisk() { TheWatch().neverWaits = true; }

std::vector<FileCall> RecordCalls(const std::function<void()>& work) {
    std::vector<FileCall> calls;
    TheWatch().record = &calls;
    work();
    TheWatch().record = nullptr;
    return calls;
}

void DieAtCall(std::size_t number, bool isHalfDone) {
    TheWatch().deathIn = number;
    TheWatch().isHalfDone = isHalfDone;
}

namespace {

/// A folder as the system shows it and as the disk has it, which isn't the same until somebody waits for the disk.
class Disk {
public:
    Disk(const Files& before, std::mt19937& random) : random_(random) {
        for (const auto& [path, content] : before) {
            shown_[path] = kept_[path] = content_.size();
            content_.push_back(content);
        }
    }

    void Do(const FileCall& call, bool isKept) {
        switch (call.kind) {
            case FileCall::Kind::Create:
                shown_[call.path] = content_.size();
                content_.emplace_back();
                if (isKept || Chance()) kept_[call.path] = shown_[call.path];
                break;
            case FileCall::Kind::Write:
                Write(content_[shown_.at(call.path)], call, isKept);
                break;
            case FileCall::Kind::Resize:
                if (isKept || Chance()) content_[shown_.at(call.path)].resize(call.offset);
                break;
            case FileCall::Kind::Sync:
                break;
            case FileCall::Kind::Remove:
                shown_.erase(call.path);
                if (isKept || Chance()) kept_.erase(call.path);
                break;
            case FileCall::Kind::Rename:
                Move(shown_, call);
                if (isKept || Chance()) Move(kept_, call);
                break;
        }
    }

    Files Kept() const {
        Files files;
        for (const auto& [path, number] : kept_) files[path] = content_[number];
        return files;
    }

private:
    using Names = std::map<std::string, std::size_t>;

    bool Chance() { return random_() % 2 == 0; }

    void Write(std::string& content, const FileCall& call, bool isKept) {
        constexpr std::size_t sector = 512;
        for (std::size_t at = 0; at < call.bytes.size(); at += sector) {
            if (!isKept && !Chance()) continue;
            const std::string piece = call.bytes.substr(at, sector);
            const std::size_t place = static_cast<std::size_t>(call.offset) + at;
            if (content.size() < place + piece.size()) content.resize(place + piece.size());
            content.replace(place, piece.size(), piece);
        }
    }

    static void Move(Names& names, const FileCall& call) {
        const auto from = names.find(call.path);
        if (from == names.end()) return;
        names[call.newPath] = from->second;
        names.erase(call.path);
    }

    std::mt19937& random_;
    std::vector<std::string> content_{};
    Names shown_{};
    Names kept_{};
};

/// Whether somebody waited for what a call does before the power failed.
bool IsWaitedFor(const std::vector<FileCall>& calls, std::size_t number, std::size_t count) {
    const FileCall& call = calls[number];
    const bool isData = call.kind == FileCall::Kind::Write || call.kind == FileCall::Kind::Resize;
    const std::string place = isData ? call.path : std::filesystem::path(call.path).parent_path().string();
    for (std::size_t i = number + 1; i < count; ++i)
        if (calls[i].kind == FileCall::Kind::Sync && calls[i].path == place) return true;
    return false;
}

}  // namespace

Files AfterPowerLoss(const Files& before, const std::vector<FileCall>& calls, std::size_t count, std::mt19937& random) {
    Disk disk(before, random);
    for (std::size_t i = 0; i < count; ++i) disk.Do(calls[i], IsWaitedFor(calls, i, count));
    return disk.Kept();
}

}  // namespace quillform::test
