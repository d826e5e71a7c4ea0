// SPDX-License-Identifier: MIT
#include "support/process.h"

#include "support/graph.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cstdlib>
#include <stdexcept>

namespace morl_test {
namespace {

[[noreturn]] void RunChild(std::vector<char*> arguments, const std::string& out,
                           const std::string& err)
{
    ::dup2(::open("/dev/null", O_RDONLY), 0);
    ::dup2(::open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
    ::dup2(::open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
}

}  // namespace

std::string ToolPath()
{
    const char* const named = std::getenv("MORLC");
    return named != nullptr ? named : MORLC;
}

ProcessResult RunProcess(const std::vector<std::string>& command)
{
    const TemporaryDirectory directory;
    const std::string out = (directory.path / "out").string();
    const std::string err = (directory.path / "err").string();
    std::vector<char*> arguments;
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    const pid_t child = ::fork();
    if (child < 0) {
        throw std::runtime_error("cannot start " + command[0]);
    }
    if (child == 0) {
        RunChild(arguments, out, err);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ProcessResult result;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    result.out = ReadText(out);
    result.err = ReadText(err);
    return result;
}

ProcessResult RunShell(const std::string& line)
{
    return RunProcess({"/bin/sh", "-c", line});
}

}  // namespace morl_test
