#pragma once

#include <algorithm>
#include <cstddef>
#include <system_error>

namespace velmora {

/// Lets tests break what the host does to files: called before every system call that opens, reads or
/// changes something, with its name ("open", "read", "write", "fsync", "close", "rename", "unlink", "mkdir",
/// "rmdir", "stat", "readlink", "link", "chmod", "flock", and "opendir" for a folder that is to be flushed).
/// 0 lets the call happen, an errno value makes it fail that way.
inline int (*gFaultHook)(const char* operation) = nullptr;

/// The longest piece that one "write" takes, given what is wanted: full disks begin with short writes.
inline std::size_t (*gShortWriteHook)(std::size_t wanted) = nullptr;

inline int FaultAt(const char* operation) {
    return gFaultHook != nullptr ? gFaultHook(operation) : 0;
}

inline void CheckFault(const char* operation) {
    if (const int code = FaultAt(operation); code != 0)
        throw std::system_error(code, std::generic_category(), operation);
}

inline std::size_t WritablePiece(std::size_t wanted) {
    return gShortWriteHook != nullptr ? std::min(wanted, gShortWriteHook(wanted)) : wanted;
}

} // namespace velmora
