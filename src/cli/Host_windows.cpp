#include "cli/Host.h"

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

namespace velmora::Host {

std::vector<std::string> Arguments(int /*argc*/, char** /*argv*/) {
    int count = 0;
    // The plain arguments have lost every character that the system's code page lacks.
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        const std::u8string utf8 = std::filesystem::path(words[i]).u8string();
        arguments.emplace_back(utf8.begin(), utf8.end());
    }
    LocalFree(words);
    return arguments;
}

bool OutputIsTerminal() {
    return _isatty(_fileno(stdout)) != 0;
}

std::string OutputOf(const std::vector<std::string>& words, int& status) {
    std::wstring line;
    for (const std::string& word : words)
        line += L'"' + std::filesystem::path(std::u8string(word.begin(), word.end())).wstring() + L"\" ";
    std::string output;
    // The shell takes off the outermost quotes.
    std::FILE* pipe = _wpopen((L'"' + line + L'"').c_str(), L"rb");
    if (pipe == nullptr) {
        status = -1;
        return output;
    }
    char bytes[4096];
    while (const std::size_t count = std::fread(bytes, 1, sizeof bytes, pipe))
        output.append(bytes, count);
    status = _pclose(pipe);
    return output;
}

void PrepareStreams() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

} // namespace velmora::Host
