// Pictures come from strangers: no bytes may do more than be refused.
#include "platform/Pcx.h"
#include "platform/Failure.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        velmora::DecodePcx({reinterpret_cast<const char*>(data), size});
    } catch (const velmora::Failure&) {
    }
    return 0;
}
