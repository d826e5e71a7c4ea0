// SPDX-License-Identifier: MIT
#include "platform.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace morlc {
namespace {

/// The permissions of any new file. (mkstemp makes its file private.)
mode_t NewFileMode()
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

mode_t ModeOf(const std::filesystem::path& path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : NewFileMode();
}

/// What RunWithStack hands to its thread.
struct StackedWork {
    const std::function<void()>& work;
    std::exception_ptr thrown;
};

void* RunStackedWork(void* passed)
{
    auto& stacked = *static_cast<StackedWork*>(passed);
    try {
        stacked.work();
    } catch (...) {
        stacked.thrown = std::current_exception();
    }
    return nullptr;
}

}  // namespace

std::vector<std::string> StartProcess(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN);
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

std::string ProgramPath()
{
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).string();
}

std::string QuoteWord(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return quoted + "'";
}

int RunCommand(const std::string& command)
{
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool HasShell()
{
    return true;
}

bool HasTerminal()
{
    return ::isatty(STDERR_FILENO) == 1;
}

bool HasColourTerminal()
{
    const char* const terminal = std::getenv("TERM");
    return HasTerminal() && terminal != nullptr && std::string_view(terminal) != "dumb";
}

void RunWithStack(std::size_t bytes, const std::function<void()>& work)
{
    StackedWork stacked = {work, nullptr};
    pthread_attr_t attributes;
    pthread_t thread = {};
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, bytes);
    const int error = pthread_create(&thread, &attributes, RunStackedWork, &stacked);
    pthread_attr_destroy(&attributes);
    if (error != 0) {
        throw std::runtime_error("cannot start a thread: " +
                                 std::generic_category().message(error));
    }
    pthread_join(thread, nullptr);
    if (stacked.thrown) {
        std::rethrow_exception(stacked.thrown);
    }
}

std::FILE* OpenToWrite(const std::string& path)
{
    return std::fopen(path.c_str(), "wb");
}

void LockFolder(const std::filesystem::path& folder)
{
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        return;
    }
    // It stays open: the system takes the lock back when the process ends.
    while (::flock(descriptor, LOCK_EX) != 0 && errno == EINTR) {
    }
}

NewFile MakeFileBeside(const std::filesystem::path& target, bool isPrivate)
{
    std::string path = (target.parent_path() / (kTemporaryStart + std::string("XXXXXX"))).string();
    const int descriptor = ::mkstemp(path.data());
    if (descriptor < 0) {
        return {};
    }
    if (!isPrivate) {
        ::fchmod(descriptor, ModeOf(target));
    }
    std::FILE* const stream = ::fdopen(descriptor, "wb");
    if (stream == nullptr) {
        ::close(descriptor);
        ::unlink(path.c_str());
    }
    return {stream, path};
}

bool RenameOver(const std::filesystem::path& from, const std::filesystem::path& target)
{
    return std::rename(from.c_str(), target.c_str()) == 0;
}

bool RenameToNew(const std::filesystem::path& from, const std::filesystem::path& target)
{
    if (::link(from.c_str(), target.c_str()) == 0) {
        ::unlink(from.c_str());
        return true;
    }
    // Not every file system knows hard links.
    struct stat status = {};
    if (errno == EEXIST || ::lstat(target.c_str(), &status) == 0) {
        errno = EEXIST;
        return false;
    }
    return RenameOver(from, target);
}

FileVersion VersionOf(const std::filesystem::path& file)
{
    constexpr std::int64_t kNanoseconds = 1000000000;
    struct stat status = {};
    if (::stat(file.c_str(), &status) != 0) {
        return {};
    }
    return {status.st_ino, status.st_ctim.tv_sec * kNanoseconds + status.st_ctim.tv_nsec};
}

}  // namespace morlc
