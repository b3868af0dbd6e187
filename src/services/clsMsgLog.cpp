#include "services/clsMsgLog.h"

#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/HostDate.h"
#include "platform/Process.h"
#include "platform/TimeText.h"

#include <chrono>
#include <cmath>
#include <random>

namespace velmora {

namespace {

constexpr const char* LineEnd = "\r\n";
/// Two numeric identifiers of which nothing in the program sets any value but 0.
constexpr const char* Identifiers = "0-0";
constexpr const char* IdentifierFields = ",0,0,";
constexpr std::size_t LongestExeName = 15;

std::string RightAligned(const std::string& text, std::size_t width) {
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

/// From 0 to 1000, both ends half as likely as the others.
std::int32_t RandomNumber() {
    const auto now = std::chrono::high_resolution_clock::now().time_since_epoch().count();
    std::mt19937_64 generator(static_cast<std::uint64_t>(now));
    return static_cast<std::int32_t>(std::lround(std::uniform_real_distribution<>(0, 1)(generator) * 1000));
}

std::string NewIdentifier(std::time_t time) {
    return TimeText(time, "%Y%m%d%H%M%S") + std::to_string(RandomNumber()).substr(0, 3);
}

std::string ShortExeName(std::string name) {
    constexpr std::size_t extension = 4;
    if (name.size() > LongestExeName)
        name.resize(name.size() - extension);
    return name.substr(0, LongestExeName);
}

} // namespace

std::string GeneralDate(std::time_t time) {
    if (auto custom = HostDate(time))
        return *custom;
    const std::tm& local = *std::localtime(&time);
    const int hour = local.tm_hour % 12 == 0 ? 12 : local.tm_hour % 12;
    return std::to_string(local.tm_mon + 1) + '/' + std::to_string(local.tm_mday) + '/' +
           std::to_string(local.tm_year + 1900) + ' ' + std::to_string(hour) + TimeText(time, ":%M:%S ") +
           (local.tm_hour < 12 ? "AM" : "PM");
}

std::string ExecutableName() {
    try {
        return Files::NameOf(Process::ExecutablePath());
    } catch (const Failure&) {
        return {};
    }
}

clsMsgLog::clsMsgLog(const std::string& executableName)
    : appExeName(ShortExeName(executableName)), uniqueId(RandomNumber()) {}

void clsMsgLog::SetMsgOutputDIR(const std::string& directory) {
    msgOutputDir = Files::Join(directory, "");
}

void clsMsgLog::WriteToLogFile(std::string& text, bool addHeader) const {
    if (LogFile.empty() || !Files::FolderExists(Files::FolderOf(LogFile)))
        return;
    if (text == "*")
        text.assign(43, '*');
    else if (addHeader)
        text = RightAligned(GeneralDate(std::time(nullptr)), 21) + "   " + RightAligned(appExeName, 15) +
               "   " + RightAligned(std::to_string(uniqueId), 4) + "   " + text;
    Files::Append(LogFile, text + LineEnd);
}

void clsMsgLog::MaintainLogFile(std::int32_t maxSize, std::string* backupDir) const {
    try {
        if (!Files::FileExists(LogFile) || static_cast<std::int64_t>(Files::SizeOf(LogFile)) <= maxSize)
            return;
        if (backupDir != nullptr) {
            *backupDir = Files::Join(*backupDir, "");
            Files::CopyFile(LogFile, *backupDir + "OLD" + Files::NameOf(LogFile));
        }
        Files::DeleteFile(LogFile);
    } catch (Failure& failure) {
        failure.Source = "clsMsgLog_MaintainLogFile";
        throw;
    }
}

std::string clsMsgLog::FilePath(const std::string& kind, const std::string& fileId) const {
    return msgOutputDir + kind + "[" + Identifiers + "]" + fileId + ".txt";
}

std::string clsMsgLog::SendMsgFile(const std::string& first, const std::string& second,
                                   std::string fileId) const {
    if (msgOutputDir.empty())
        return fileId;
    try {
        const std::time_t now = std::time(nullptr);
        if (fileId.empty())
            fileId = NewIdentifier(now);
        Files::Append(FilePath("Msg", fileId), fileId + IdentifierFields + GeneralDate(now) + ',' +
                                                   Quoted(first) + ',' + Quoted(second) + LineEnd);
        return fileId;
    } catch (Failure& failure) {
        failure.Source = "clsMsgLog_SendMsgFile";
        throw;
    }
}

std::string clsMsgLog::SendErrFile(const ErrFileRecord& error, std::string fileId) const {
    if (msgOutputDir.empty())
        return fileId;
    if (fileId.empty())
        fileId = NewIdentifier(std::time(nullptr));
    const std::string line = fileId + IdentifierFields + Quoted(error.User) + ',' +
                             GeneralDate(error.ErrorTime) + ',' + Quoted(error.Record) + ',' + error.AppName +
                             ',' + error.Source + ',' + std::to_string(error.Number) + ',' +
                             Quoted(error.Description) + ',' + Quoted(error.CallStack) + ',' +
                             Quoted(error.UserMessage) + LineEnd;
    try {
        Files::Append(FilePath("Err", fileId), line);
    } catch (const Failure&) {
        // The failure that is being reported matters more than its file.
    }
    return fileId;
}

} // namespace velmora
