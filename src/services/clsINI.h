#pragma once

#include "services/OperationTrace.h"

#include <cstdint>
#include <functional>
#include <string>

namespace velmora {

/// Accessor of the settings file. Values are cut to what fits into a buffer of the size that the caller
/// names, and short ones come back padded: that is how all its callers know them.
class clsINI {
  public:
    std::string INIFile;     ///< full path
    std::string LastFailure; ///< why the last one that failed to write did

    /// Writes a key, creating section and key as needed. Not 0 on success.
    std::int32_t PutINIValue(const std::string& section, const std::string& key, const std::string& value);

    /// Replaces a whole section by "key=value" entries separated by NUL characters. Not 0 on success.
    std::int32_t PutINISection(const std::string& section, const std::string& data);

    /// The section's entries, separated by NUL characters and at most `bufferSize - 3` characters;
    /// `bufferSize` NUL characters when it is missing or empty. Throws Failure (5) for a negative size, with
    /// the source "clsINI*GetINISection" after the operations before it.
    std::string GetINISection(const std::string& section, std::int32_t bufferSize);

    /// The first `bufferSize - 2` characters of a key's value. A value of one character or none (a missing
    /// one too) is followed by NUL characters up to the size of the buffer. Throws as GetINISection does.
    std::string GetINIValue(const std::string& section, const std::string& key, std::int32_t bufferSize);

  private:
    std::int32_t Written(const std::function<void()>& write);

    OperationTrace trace{"clsINI"};
};

} // namespace velmora
