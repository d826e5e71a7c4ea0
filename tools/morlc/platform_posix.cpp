// SPDX-License-Identifier: MIT
#include "platform.h"

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
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

/// Reads or writes all of some bytes. Returns whether that was possible.
template <class Transfer, class Byte>
bool TransferAll(Transfer transfer, int descriptor, Byte* bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t done = transfer(descriptor, bytes, size);
        if (done <= 0 && !(done < 0 && errno == EINTR)) {
            return false;
        }
        bytes += std::max<ssize_t>(done, 0);
        size -= static_cast<std::size_t>(std::max<ssize_t>(done, 0));
    }
    return true;
}

/// What RunApart is to do.
struct Pieces {
    std::size_t count;
    std::size_t step;  ///< from one piece of a process to its next one
    const std::function<std::string(std::size_t)>& work;
};

/// A child that does pieces of work and writes each result, after its size, to a pipe. It ends with
/// this object.
class WorkProcess {
public:
    WorkProcess(const Pieces& pieces, std::size_t first) : piece(first), step(pieces.step)
    {
        int ends[2] = {};
        if (::pipe(ends) != 0) {
            throw std::runtime_error("cannot make a pipe: " +
                                     std::generic_category().message(errno));
        }
        child = ::fork();
        if (child == 0) {
            ::close(ends[0]);
            Work(ends[1], pieces, first);
        }
        ::close(ends[1]);
        results = ends[0];
        if (child < 0) {
            const int error = errno;
            ::close(results);
            throw std::runtime_error("cannot start a process: " +
                                     std::generic_category().message(error));
        }
    }
    WorkProcess(const WorkProcess&) = delete;
    WorkProcess& operator=(const WorkProcess&) = delete;
    ~WorkProcess()
    {
        ::kill(child, SIGKILL);
        while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
        }
        ::close(results);
    }

    int Results() const { return results; }

    /// The piece that it is at.
    std::size_t Piece() const { return piece; }

    /// Whether there is a result, or none will come.
    bool IsReady() const
    {
        pollfd wait = {results, POLLIN, 0};
        return ::poll(&wait, 1, 0) > 0;
    }

    /// The result of the piece, after which it is at its next one; nothing if there is none.
    std::optional<std::string> Read()
    {
        std::size_t size = 0;
        if (!TransferAll(::read, results, reinterpret_cast<char*>(&size), sizeof size)) {
            return std::nullopt;
        }
        std::string result(size, '\0');
        if (!TransferAll(::read, results, result.data(), size)) {
            return std::nullopt;
        }
        piece += step;
        return result;
    }

private:
    /// Nothing gets out of it: what is behind it belongs to the parent.
    [[noreturn]] static void Work(int pipe, const Pieces& pieces, std::size_t first) noexcept
    {
        constexpr unsigned kPatience = 60;  // seconds
        ::dup2(::open("/dev/null", O_WRONLY), STDERR_FILENO);
        for (std::size_t i = first; i < pieces.count; i += pieces.step) {
            ::alarm(kPatience);  // which ends the process
            const std::string result = pieces.work(i);
            const std::size_t size = result.size();
            if (!TransferAll(::write, pipe, reinterpret_cast<const char*>(&size), sizeof size) ||
                !TransferAll(::write, pipe, result.data(), size)) {
                break;
            }
        }
        ::_exit(0);
    }

    std::size_t piece;
    std::size_t step;
    pid_t child = -1;
    int results = -1;
};

/// Waits until one of them is ready.
void WaitForAny(const std::vector<std::unique_ptr<WorkProcess>>& children)
{
    std::vector<pollfd> waits;
    waits.reserve(children.size());
    for (const std::unique_ptr<WorkProcess>& child : children) {
        waits.push_back({child->Results(), POLLIN, 0});
    }
    ::poll(waits.data(), waits.size(), -1);
}

}  // namespace

std::vector<std::string> StartProcess(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);  // a file that gets too large is a failed write, too
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

void RunApart(std::size_t count, std::size_t processes,
              const std::function<std::string(std::size_t)>& work,
              const std::function<void(std::size_t, std::optional<std::string>)>& take)
{
    const Pieces pieces = {count, processes, work};
    std::vector<std::unique_ptr<WorkProcess>> children;
    for (std::size_t first = 0; first < std::min(processes, count); ++first) {
        children.push_back(std::make_unique<WorkProcess>(pieces, first));
    }
    while (!children.empty()) {
        WaitForAny(children);
        for (std::unique_ptr<WorkProcess>& child : children) {
            if (!child->IsReady()) {
                continue;
            }
            const std::size_t piece = child->Piece();
            std::optional<std::string> result = child->Read();
            // Without a result, it has died with this piece, and another goes on behind it.
            const bool isDead = !result;
            take(piece, std::move(result));
            const std::size_t next = piece + processes;
            if (next >= count) {
                child.reset();
            } else if (isDead) {
                child = std::make_unique<WorkProcess>(pieces, next);
            }
        }
        children.erase(std::remove(children.begin(), children.end(), nullptr), children.end());
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

bool Exchange(const std::filesystem::path& one, const std::filesystem::path& other)
{
#ifdef RENAME_EXCHANGE
    return ::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0;
#else
    (void)one;
    (void)other;
    return false;
#endif
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
