// SPDX-License-Identifier: MIT
#include "platform.h"

#include "parallel.h"
#include "path.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

#include <shellapi.h>
#include <cerrno>
#include <cstdlib>
#include <exception>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace morlc {
namespace {

std::string ToUtf8(std::wstring_view text)
{
    return std::filesystem::path(text).u8string();
}

/// The terminal's code page before this program, which stays when the program has ended.
UINT previousCodePage = 0;

void RestoreCodePage()
{
    SetConsoleOutputCP(previousCodePage);
}

/// Texts are UTF-8.
void PrepareTerminal()
{
    previousCodePage = GetConsoleOutputCP();
    if (HasTerminal() && previousCodePage != CP_UTF8 && SetConsoleOutputCP(CP_UTF8) != 0) {
        std::atexit(RestoreCodePage);
    }
}

/// Makes and opens a file that must be new.
std::FILE* OpenNew(const std::filesystem::path& path)
{
    const int descriptor =
        ::_wopen(path.c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY, _S_IREAD | _S_IWRITE);
    std::FILE* const stream = descriptor < 0 ? nullptr : ::_fdopen(descriptor, "wb");
    if (descriptor >= 0 && stream == nullptr) {
        ::_close(descriptor);
    }
    return stream;
}

int ErrnoOf(DWORD error)
{
    return std::error_code(static_cast<int>(error), std::system_category())
        .default_error_condition()
        .value();
}

/// What RunWithStack hands to its thread.
struct StackedWork {
    const std::function<void()>& work;
    std::exception_ptr thrown;
};

DWORD WINAPI RunStackedWork(void* passed)
{
    auto& stacked = *static_cast<StackedWork*>(passed);
    try {
        stacked.work();
    } catch (...) {
        stacked.thrown = std::current_exception();
    }
    return 0;
}

bool Move(const std::filesystem::path& from, const std::filesystem::path& target, DWORD flags)
{
    if (MoveFileExW(from.c_str(), target.c_str(), flags) != 0) {
        return true;
    }
    errno = ErrnoOf(GetLastError());
    return false;
}

}  // namespace

std::vector<std::string> StartProcess(int /*argc*/, char** /*argv*/)
{
    ::_setmode(::_fileno(stdout), _O_BINARY);
    ::_setmode(::_fileno(stderr), _O_BINARY);
    std::setvbuf(stderr, nullptr, _IONBF, 0);  // in order with standard output
    PrepareTerminal();
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(
        CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(ToUtf8(words.get()[i]));
    }
    return arguments;
}

std::string ProgramPath()
{
    std::wstring path(MAX_PATH, L'\0');
    DWORD size = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    while (size == path.size()) {  // it did not fit
        path.resize(2 * path.size());
        size = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    path.resize(size);
    return PathText(path);
}

std::string QuoteWord(const std::string& text)
{
    std::string quoted = "\"";
    std::size_t backslashes = 0;  // before this character; doubled before a quotation mark
    for (const char c : text) {
        if (c == '"') {
            quoted.append(backslashes + 1, '\\');
        }
        backslashes = c == '\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    return quoted.append(backslashes, '\\') + "\"";
}

int RunCommand(const std::string& command)
{
    return ::_wsystem(std::filesystem::u8path(command).c_str());
}

bool HasShell()
{
    return false;
}

bool HasTerminal()
{
    return ::_isatty(::_fileno(stderr)) != 0;
}

bool HasColourTerminal()
{
    HANDLE terminal = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(terminal, &mode) != 0 &&
           SetConsoleMode(terminal, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

void RunWithStack(std::size_t bytes, const std::function<void()>& work)
{
    StackedWork stacked = {work, nullptr};
    HANDLE thread = CreateThread(nullptr, bytes, RunStackedWork, &stacked,
                                 STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread == nullptr) {
        throw std::runtime_error("cannot start a thread: " +
                                 std::generic_category().message(ErrnoOf(GetLastError())));
    }
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    if (stacked.thrown) {
        std::rethrow_exception(stacked.thrown);
    }
}

void RunApart(std::size_t count, std::size_t processes,
              const std::function<std::string(std::size_t)>& work,
              const std::function<void(std::size_t, std::optional<std::string>)>& take)
{
    std::mutex mutex;
    RunParallel(processes, count, [&](std::size_t /*thread*/, std::size_t i) {
        std::string result = work(i);
        const std::lock_guard<std::mutex> lock(mutex);
        take(i, std::move(result));
    });
}

std::FILE* OpenToWrite(const std::string& path)
{
    return ::_wfopen(ToPath(path).c_str(), L"wb");
}

void LockFolder(const std::filesystem::path& folder)
{
    constexpr DWORD kPause = 10;  // milliseconds
    const std::filesystem::path lock = folder / (kTemporaryStart + std::string("lock"));
    // It stays open, and goes with the process.
    while (CreateFileW(lock.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                       FILE_FLAG_DELETE_ON_CLOSE | FILE_ATTRIBUTE_HIDDEN,
                       nullptr) == INVALID_HANDLE_VALUE &&
           GetLastError() == ERROR_SHARING_VIOLATION) {
        Sleep(kPause);
    }
}

NewFile MakeFileBeside(const std::filesystem::path& target, bool /*isPrivate*/)
{
    constexpr int kAttempts = 100;
    for (unsigned i = 0; i < kAttempts; ++i) {
        const unsigned long long number = GetTickCount64() * kAttempts + i;
        const std::filesystem::path path =
            target.parent_path() /
            (kTemporaryStart + std::to_string(GetCurrentThreadId()) + "-" + std::to_string(number));
        std::FILE* const stream = OpenNew(path);
        if (stream != nullptr || errno != EEXIST) {
            return {stream, path};
        }
    }
    return {};
}

bool RenameOver(const std::filesystem::path& from, const std::filesystem::path& target)
{
    return Move(from, target, MOVEFILE_REPLACE_EXISTING);
}

bool RenameToNew(const std::filesystem::path& from, const std::filesystem::path& target)
{
    return Move(from, target, 0);
}

bool Exchange(const std::filesystem::path& one, const std::filesystem::path& other)
{
    const std::filesystem::path spare = one.wstring() + L"-1";
    if (ReplaceFileW(other.c_str(), one.c_str(), spare.c_str(), 0, nullptr, nullptr) == 0) {
        return false;
    }
    const bool isDone = Move(spare, one, 0);
    if (!isDone) {
        RenameOver(spare, other);
    }
    return isDone;
}

FileVersion VersionOf(const std::filesystem::path& file)
{
    constexpr DWORD kAnyShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE handle = CreateFileW(file.c_str(), FILE_READ_ATTRIBUTES, kAnyShare, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return {};
    }
    constexpr unsigned kHalf = 32;  // bits
    BY_HANDLE_FILE_INFORMATION identity = {};
    FILE_BASIC_INFO times = {};
    GetFileInformationByHandle(handle, &identity);
    GetFileInformationByHandleEx(handle, FileBasicInfo, &times, sizeof times);
    CloseHandle(handle);
    return {std::uint64_t{identity.nFileIndexHigh} << kHalf | identity.nFileIndexLow,
            times.ChangeTime.QuadPart};
}

}  // namespace morlc
