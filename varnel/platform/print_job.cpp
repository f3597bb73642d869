// Printer: handing a file to the print system.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

#include "varnel/platform/printer.h"

namespace varnel {
namespace {

/// A pipe that other programs started meanwhile do not inherit.
struct Pipe {
    Pipe() { valid = pipe2(ends, O_CLOEXEC) == 0; }
    ~Pipe() {
        Close(0);
        Close(1);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    void Close(int end) {
        if (ends[end] >= 0) close(ends[end]);
        ends[end] = -1;
    }

    bool valid = false;
    int ends[2] = {-1, -1};
};

/// Starts lp with its standard error in the pipe and without an input. 0, or the error's number.
int Start(const std::vector<std::string>& arguments, const Pipe& errors, pid_t& child) {
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, errors.ends[1], STDERR_FILENO);
    const int result = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return result;
}

/// The first line of what the other end writes, at most 200 characters; reads to its end.
std::string ReadLine(int fd) {
    std::string text;
    std::array<char, 512> buffer{};
    for (;;) {
        const ssize_t size = read(fd, buffer.data(), buffer.size());
        if (size < 0 && errno == EINTR) continue;
        if (size <= 0) break;
        if (text.size() < 200) text.append(buffer.data(), static_cast<std::size_t>(size));
    }
    return text.substr(0, std::min<std::size_t>(text.find('\n'), 200));
}

}  // namespace

bool Printer::Submit(const CString& fileName, const CString& printer, CString& why) {
    why.clear();
    if (access(fileName.c_str(), R_OK) != 0) {
        why = "The file " + fileName + " cannot be read: " + std::strerror(errno) + ".";
        return false;
    }
    std::vector<std::string> arguments = {"lp"};
    if (!printer.empty()) arguments.insert(arguments.end(), {"-d", printer});
    arguments.insert(arguments.end(), {"--", fileName});
    Pipe errors;
    pid_t child = 0;
    const int failed = errors.valid ? Start(arguments, errors, child) : errno;
    if (failed != 0) {
        why = failed == ENOENT ? "There is no print system: its program lp is not installed."
                               : "The print system's program lp cannot be started: " +
                                     std::string(std::strerror(failed)) + ".";
        return false;
    }
    errors.Close(1);
    const std::string said = ReadLine(errors.ends[0]);
    int status = 0;
    pid_t ended = 0;
    do {
        ended = waitpid(child, &status, 0);
    } while (ended < 0 && errno == EINTR);
    // A host that ignores its children leaves no status behind; lp says what goes wrong.
    const bool accepted =
        ended == child ? WIFEXITED(status) && WEXITSTATUS(status) == 0 : said.empty();
    if (!accepted)
        why = "The print system did not take the job" + (said.empty() ? "." : ": " + said);
    return accepted;
}

}  // namespace varnel
