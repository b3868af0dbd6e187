// Any bytes may stand in an event file. What was read must survive being written and read again, from the
// second reading on: the first one turns the name "!2nd" into "2nd", which only the second one makes legal.
#include "events/clsEvent.h"
#include "platform/Failure.h"
#include "records/BlockReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

std::string ReadAndWrite(std::string_view bytes) {
    std::string written;
    const velmora::FindingSink nobody = [](const velmora::Finding&) {};
    velmora::BlockReader reader(velmora::EventKind, "Fuzz.event", nobody,
                                [&written](std::unique_ptr<velmora::Record> record, std::size_t) {
                                    written +=
                                        static_cast<velmora::clsEvent&>(*record).GenerateEventString(false);
                                });
    reader.Read(bytes);
    return written;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string once;
    try {
        once = ReadAndWrite(ReadAndWrite({reinterpret_cast<const char*>(data), size}));
    } catch (const velmora::Failure&) {
        return 0;
    }
    if (ReadAndWrite(once) != once)
        std::abort();
    return 0;
}
