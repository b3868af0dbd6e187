#include "services/clsINI.h"

#include "platform/ProfileStrings.h"

#include <cstddef>

namespace velmora {

namespace {

std::size_t CheckedSize(std::int32_t bufferSize) {
    if (bufferSize < 0)
        throw Failure(FailureInvalidArgument, "Invalid procedure call or argument");
    return static_cast<std::size_t>(bufferSize);
}

/// The room that is offered of a buffer: one less than there is.
std::size_t OfferedOf(std::size_t bufferSize) {
    return bufferSize == 0 ? 0 : bufferSize - 1;
}

/// What a buffer holds after `copied` was put into it.
std::string BufferWith(std::string copied, std::size_t bufferSize) {
    if (copied.size() <= 1)
        copied.resize(bufferSize, '\0');
    else if (copied.back() == '\0')
        copied.pop_back();
    return copied;
}

} // namespace

std::int32_t clsINI::Written(const std::function<void()>& write) {
    try {
        write();
        return 1;
    } catch (const Failure& failure) {
        LastFailure = failure.Description();
        return 0;
    }
}

std::int32_t clsINI::PutINIValue(const std::string& section, const std::string& key,
                                 const std::string& value) {
    return Written([&] { ProfileStrings::Write(section, key, value, INIFile); });
}

std::int32_t clsINI::PutINISection(const std::string& section, const std::string& data) {
    return Written([&] { ProfileStrings::WriteSection(section, data, INIFile); });
}

std::string clsINI::GetINISection(const std::string& section, std::int32_t bufferSize) {
    return trace.Run("GetINISection", [&] {
        const std::size_t size = CheckedSize(bufferSize);
        return BufferWith(ProfileStrings::ReadSection(section, OfferedOf(size), INIFile), size);
    });
}

std::string clsINI::GetINIValue(const std::string& section, const std::string& key, std::int32_t bufferSize) {
    return trace.Run("GetINIValue", [&] {
        const std::size_t size = CheckedSize(bufferSize);
        return BufferWith(ProfileStrings::Read(section, key, "", OfferedOf(size), INIFile), size);
    });
}

} // namespace velmora
