#include "platform/Process.h"

#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/HostWindows.h"

#include <knownfolders.h>
#include <shlobj.h>
#include <system_error>

namespace velmora::Process {

namespace {

/// A word the way programs take command lines apart: quoted, with backslashes doubled before quotes only.
std::wstring Quoted(const std::wstring& word) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t character : word) {
        if (character == L'"')
            quoted.append(backslashes + 1, L'\\');
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        quoted += character;
    }
    return quoted.append(backslashes, L'\\') + L'"';
}

std::wstring Joined(const std::vector<std::string>& commandLine) {
    const std::string& program = commandLine.front();
    const bool isPath = program.find_first_of("/\\") != std::string::npos;
    std::wstring joined = Quoted(isPath ? Files::HostPath(program).native() : ToWide(program));
    for (std::size_t i = 1; i < commandLine.size(); ++i)
        joined += L' ' + Quoted(ToWide(commandLine[i]));
    return joined;
}

/// The process handle of a started program, null when it cannot be started.
HANDLE Launch(std::wstring commandLine, bool inheriting, std::optional<int> windowStyle) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    if (windowStyle) {
        startup.dwFlags = STARTF_USESHOWWINDOW;
        startup.wShowWindow = static_cast<WORD>(*windowStyle);
    }
    PROCESS_INFORMATION started{};
    if (!::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, inheriting, NORMAL_PRIORITY_CLASS,
                          nullptr, nullptr, &startup, &started))
        return nullptr;
    ::CloseHandle(started.hThread);
    return started.hProcess;
}

std::string UserFolder(const KNOWNFOLDERID& base) {
    PWSTR folder = nullptr;
    const bool known = ::SHGetKnownFolderPath(base, KF_FLAG_DONT_VERIFY, nullptr, &folder) == S_OK;
    const std::string text = known ? Files::PathText(folder) : Environment("USERPROFILE");
    ::CoTaskMemFree(folder);
    return Files::Join(text, "VelmoraWriter");
}

} // namespace

void Start(const std::vector<std::string>& commandLine) {
    if (commandLine.empty() || commandLine.front().empty())
        throw Failure(FailureFileNotFound, "Cannot start a program without a name");
    const HANDLE process = Launch(Joined(commandLine), false, std::nullopt);
    if (process == nullptr) {
        const std::error_code reason(static_cast<int>(::GetLastError()), std::system_category());
        throw Failure(FailureFileNotFound, "Cannot start " + commandLine.front() + ": " +
                                               PathTexts::FromHostText(reason.message()));
    }
    ::CloseHandle(process);
}

void RunAndWait(std::string_view commandLine, std::optional<int> windowStyle,
                const std::function<void()>& waiting) {
    const HANDLE process = Launch(ToWide(commandLine), true, windowStyle);
    if (process == nullptr)
        return;
    while (::WaitForSingleObject(process, waiting ? 50 : INFINITE) == WAIT_TIMEOUT)
        waiting();
    ::CloseHandle(process);
}

std::string ExecutablePath() {
    std::wstring path(32768, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return Files::PathText(path);
}

std::optional<std::uint64_t> FreeBytes(std::string_view path) {
    ULARGE_INTEGER free{};
    if (!::GetDiskFreeSpaceExW(Files::HostPath(path).c_str(), &free, nullptr, nullptr))
        return std::nullopt;
    return free.QuadPart;
}

std::string SystemFolder() {
    std::wstring folder(512, L'\0');
    folder.resize(::GetWindowsDirectoryW(folder.data(), static_cast<UINT>(folder.size())));
    return FromWide(folder);
}

std::string ComputerName() {
    std::wstring name(512, L'\0');
    auto length = static_cast<DWORD>(name.size());
    name.resize(::GetComputerNameW(name.data(), &length) ? length : 0);
    return FromWide(name);
}

std::string UserDataFolder() {
    return UserFolder(FOLDERID_LocalAppData);
}

std::string UserConfigFolder() {
    return UserFolder(FOLDERID_RoamingAppData);
}

std::string Environment(const char* name) {
    const std::wstring wideName = ToWide(name);
    std::wstring value(32768, L'\0');
    value.resize(::GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size())));
    return FromWide(value);
}

void LetOthersComeToFront() {
    ::AllowSetForegroundWindow(ASFW_ANY);
}

} // namespace velmora::Process
