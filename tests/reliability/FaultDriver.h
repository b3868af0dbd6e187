#pragma once

#include "platform/FaultHook.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

namespace velmora {

/// What the host does at the n-th call on files.
struct Blow {
    const char* Name;
    int Code;                ///< 0: the program is killed instead
    bool Lasting = false;    ///< all later calls, too
    bool ShortFirst = false; ///< the writes before it take a few bytes only

    /// A disk that refuses everything cannot be cleaned up either.
    [[nodiscard]] bool AllowsCleaning() const { return Code == ENOSPC || (Code != 0 && !Lasting); }
};

inline constexpr Blow Blows[] = {
    {"disk full", ENOSPC},
    {"disk full for good", ENOSPC, true},
    {"disk full after short writes", ENOSPC, true, true},
    {"device error", EIO},
    {"device broken", EIO, true},
    {"no permission", EACCES},
    {"no permission any more", EACCES, true},
    {"interrupted by a signal", EINTR},
    {"killed", 0},
    {"killed after short writes", 0, false, true},
};

/// Lets a blow fall for as long as it lives.
class Strike {
  public:
    Strike(const Blow& what, int nth) {
        blow = &what;
        countdown = nth;
        gFaultHook = Ask;
        if (what.ShortFirst)
            gShortWriteHook = [](std::size_t) { return std::size_t{300}; };
    }
    ~Strike() {
        gFaultHook = nullptr;
        gShortWriteHook = nullptr;
    }
    Strike(const Strike&) = delete;
    Strike& operator=(const Strike&) = delete;

    static bool Struck() { return struck; }

  private:
    static int Ask(const char* operation) {
        const std::string_view call = operation;
        // However full a disk is, it lets go of files and renames them.
        for (const std::string_view spaceless :
             {"unlink", "rename", "read", "stat", "chmod", "flock", "readlink"})
            if (blow->Code == ENOSPC && call == spaceless)
                return 0;
        const int left = --countdown;
        if (left > 0 || (left < 0 && !blow->Lasting))
            return 0;
        struck = true;
        if (blow->Code == 0)
            ::kill(::getpid(), SIGKILL);
        return blow->Code;
    }

    static inline const Blow* blow = nullptr;
    // Files are read by several threads.
    static inline std::atomic<int> countdown = 0;
    static inline std::atomic<bool> struck = false;
};

/// Runs work, which may hold expectations, in a process of its own; false when nothing was struck in it.
template <class Work>
bool StruckInChild(const Work& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit((testing::Test::HasFailure() ? 1 : 0) + (Strike::Struck() ? 2 : 0));
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    if (WIFSIGNALED(status)) {
        EXPECT_EQ(WTERMSIG(status), SIGKILL);
        return true;
    }
    EXPECT_EQ(WEXITSTATUS(status) & 1, 0) << "the process itself found something wrong, see above";
    return WEXITSTATUS(status) != 0;
}

/// Plays a scene for every blow at every call in it. A scene prepares its files when it is made; Run works on
/// them under the blow in the child and returns whether that succeeded, Check looks at the files, Survived at
/// what the child has in memory, and Restart starts the program anew.
template <class Scene>
void PlayEveryBlow() {
    for (const Blow& blow : Blows)
        for (int nth = 1;; ++nth) {
            SCOPED_TRACE(testing::Message() << blow.Name << " at call " << nth);
            Scene scene;
            const bool struck = StruckInChild([&] {
                bool succeeded = false;
                {
                    const Strike strike(blow, nth);
                    succeeded = scene.Run();
                }
                EXPECT_TRUE(succeeded || blow.Code != EINTR);
                scene.Check(blow.AllowsCleaning());
                scene.Survived(succeeded);
            });
            if (struck && blow.Code == 0)
                scene.Check(false);
            scene.Restart();
            if (testing::Test::HasFailure())
                return;
            if (!struck) {
                EXPECT_GE(nth, 3) << "too few calls to have proved anything";
                break;
            }
        }
}

} // namespace velmora
