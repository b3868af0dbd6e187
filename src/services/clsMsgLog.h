#pragma once

#include <cstdint>
#include <ctime>
#include <string>

namespace velmora {

/// A local time as the dialogs, logs and error files show it: short date and long time as the host's user
/// writes them; where the host has no custom, in the form "M/D/YYYY h:mm:ss AM" or "PM".
std::string GeneralDate(std::time_t time);

/// File name of the running executable, with extension; empty when it cannot be told.
std::string ExecutableName();

/// What an error file holds, beside its identifiers.
struct ErrFileRecord {
    std::string User;
    std::time_t ErrorTime = 0;
    std::string Record; ///< the whole record of the error log
    std::string AppName;
    std::string Source;
    std::int32_t Number = 0;
    std::string Description;
    std::string CallStack; ///< routine names separated by "*"
    std::string UserMessage;
};

/// Appends to a plain-text log and writes small one-line message files.
class clsMsgLog {
  public:
    explicit clsMsgLog(const std::string& executableName = ExecutableName());

    std::string LogFile; ///< full path; empty: nothing is logged

    /// Directory for message and error files; empty: none are written. A separator is appended on assignment
    /// unless the directory ends in one.
    [[nodiscard]] const std::string& MsgOutputDIR() const { return msgOutputDir; }
    void SetMsgOutputDIR(const std::string& directory);
    /// The executable's name in at most 15 characters: a longer one first loses its extension.
    [[nodiscard]] const std::string& AppExeName() const { return appExeName; }
    /// A random number from 0 to 1000, drawn at creation.
    [[nodiscard]] std::int32_t UniqueID() const { return uniqueId; }

    /// Appends a line; nothing happens when the log's folder does not exist. The text "*" becomes a line of
    /// 43 asterisks; with a header any other text gets time, program and UniqueID in front of it. `text` is
    /// changed to what was written. Throws Failure when the log cannot be written.
    void WriteToLogFile(std::string& text, bool addHeader) const;

    /// Deletes a log of more than `maxSize` bytes, after copying it to "OLD" + its name in `backupDir` if one
    /// is given (it gets a separator appended unless it ends in one). Throws Failure with the source
    /// "clsMsgLog_MaintainLogFile".
    void MaintainLogFile(std::int32_t maxSize, std::string* backupDir = nullptr) const;

    /// Writes the message file of an identifier, or adds a line to it. Without an identifier one is made of
    /// the time and a random number. Returns the identifier. Throws Failure with the source
    /// "clsMsgLog_SendMsgFile".
    std::string SendMsgFile(const std::string& first, const std::string& second,
                            std::string fileId = {}) const;

    /// The same for an error file, in which a failure to write is given up quietly.
    std::string SendErrFile(const ErrFileRecord& error, std::string fileId = {}) const;

  private:
    [[nodiscard]] std::string FilePath(const std::string& kind, const std::string& fileId) const;

    std::string msgOutputDir;
    std::string appExeName;
    std::int32_t uniqueId;
};

} // namespace velmora
