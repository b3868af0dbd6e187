#include "platform/Process.h"

#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/PathTexts.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <pwd.h>
#include <spawn.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmora::Process {

namespace {

namespace fs = std::filesystem;

/// The words of a command line as the host takes them.
class Arguments {
  public:
    explicit Arguments(const std::vector<std::string>& commandLine) {
        for (const std::string& word : commandLine)
            Words.push_back(PathTexts::ToHostText(word));
        if (commandLine.front().find_first_of("/\\") != std::string::npos)
            Words.front() = Files::HostPath(commandLine.front()).native();
        for (std::string& word : Words)
            Pointers.push_back(word.data());
        Pointers.push_back(nullptr);
    }
    char* const* Get() { return Pointers.data(); }

  private:
    std::vector<std::string> Words;
    std::vector<char*> Pointers;
};

[[noreturn]] void FailToStart(const std::string& program, int code) {
    throw Failure(FailureFileNotFound,
                  "Cannot start " + program + ": " + PathTexts::FromHostText(std::strerror(code)));
}

/// A pipe that closes by itself in every program started.
class Pipe {
  public:
    Pipe() : Created(::pipe2(Ends.data(), O_CLOEXEC) == 0) {}
    ~Pipe() {
        CloseWriting();
        if (Created)
            ::close(Ends[0]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    [[nodiscard]] bool IsOpen() const { return Created; }
    void CloseWriting() {
        if (Created && Ends[1] >= 0) {
            ::close(Ends[1]);
            Ends[1] = -1;
        }
    }
    void Tell(int code) const {
        if (::write(Ends[1], &code, sizeof code) != sizeof code) {
            // Nobody is left to hear it.
        }
    }
    /// The code that was told, 0 when the writing end closed without a word.
    [[nodiscard]] int Hear() const {
        int code = 0;
        ssize_t got = 0;
        do {
            got = ::read(Ends[0], &code, sizeof code);
        } while (got < 0 && errno == EINTR);
        return got == sizeof code ? code : 0;
    }

  private:
    std::array<int, 2> Ends{-1, -1};
    bool Created;
};

void WaitFor(pid_t child) {
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

/// Runs in the child: nothing here may take memory or locks, which another thread may have held.
[[noreturn]] void BecomeProgram(char* const* arguments, const Pipe& failure) {
    const pid_t grandchild = ::fork();
    if (grandchild == 0) {
        ::setsid();
        ::execvp(arguments[0], arguments);
    }
    if (grandchild <= 0)
        failure.Tell(errno);
    ::_exit(0);
}

bool HasEnded(pid_t child) {
    const pid_t result = ::waitpid(child, nullptr, WNOHANG);
    return result != 0 && !(result < 0 && errno == EINTR);
}

/// The user's home as the host tells it.
fs::path Home() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
        return home;
    const passwd* user = ::getpwuid(::getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

/// This program's folder below a base directory of the user's; relative bases are invalid by their rules.
std::string UserFolder(const char* variable, const char* belowHome) {
    const char* const base = std::getenv(variable);
    const bool usable = base != nullptr && *base == '/';
    return Files::PathText((usable ? fs::path(base) : Home() / belowHome) / "VelmoraWriter");
}

} // namespace

void Start(const std::vector<std::string>& commandLine) {
    if (commandLine.empty() || commandLine.front().empty())
        throw Failure(FailureFileNotFound, "Cannot start a program without a name");
    Arguments arguments(commandLine);
    Pipe failure;
    // The program becomes a grandchild: the system takes care of it, it never lingers when it has ended.
    const pid_t child = failure.IsOpen() ? ::fork() : -1;
    if (child == 0)
        BecomeProgram(arguments.Get(), failure);
    if (child < 0)
        FailToStart(commandLine.front(), errno);
    failure.CloseWriting();
    WaitFor(child);
    if (const int code = failure.Hear(); code != 0)
        FailToStart(commandLine.front(), code);
}

void RunAndWait(std::string_view commandLine, std::optional<int> /*windowStyle*/,
                const std::function<void()>& waiting) {
    std::string command = PathTexts::ToHostText(commandLine);
    std::string shell = "sh";
    std::string option = "-c";
    char* const arguments[] = {shell.data(), option.data(), command.data(), nullptr};
    pid_t child = 0;
    if (::posix_spawn(&child, "/bin/sh", nullptr, nullptr, arguments, environ) != 0)
        return;
    if (!waiting) {
        WaitFor(child);
        return;
    }
    while (!HasEnded(child)) {
        waiting();
        Sleep(50);
    }
}

std::string ExecutablePath() {
    std::error_code ignored;
    return Files::PathText(fs::read_symlink("/proc/self/exe", ignored));
}

std::optional<std::uint64_t> FreeBytes(std::string_view path) {
    struct statvfs volume {};
    if (::statvfs(Files::HostPath(path).c_str(), &volume) != 0)
        return std::nullopt;
    return std::uint64_t{volume.f_bavail} * volume.f_frsize;
}

std::string SystemFolder() {
    return "/";
}

std::string ComputerName() {
    std::array<char, HOST_NAME_MAX + 1> name{};
    ::gethostname(name.data(), name.size() - 1);
    return PathTexts::FromHostText(name.data());
}

std::string UserDataFolder() {
    return UserFolder("XDG_DATA_HOME", ".local/share");
}

std::string UserConfigFolder() {
    return UserFolder("XDG_CONFIG_HOME", ".config");
}

std::string Environment(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? PathTexts::FromHostText(value) : std::string();
}

void LetOthersComeToFront() {}

} // namespace velmora::Process
