// Module files are only read: whatever stands in one, no list of a record holds a requirement twice.
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "records/BlockReader.h"
#include "sbmodules/clsSBModule.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void ExpectNoneTwice(const std::vector<std::string>& list) {
    for (std::size_t i = 0; i < list.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (velmora::CodePage::EqualNoCase(list[i], list[j]))
                std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const velmora::ProblemSink nobody = [](const velmora::Problem&) {};
    velmora::BlockReader reader(velmora::SBModuleKind, "Fuzz.SBModule", nobody,
                                [](std::unique_ptr<velmora::Record> record, std::size_t) {
                                    const auto& module = static_cast<const velmora::clsSBModule&>(*record);
                                    ExpectNoneTwice(module.TechRequirements());
                                    ExpectNoneTwice(module.ModuleRequirements());
                                });
    try {
        reader.Read({reinterpret_cast<const char*>(data), size});
    } catch (const velmora::Failure&) {
        return 0;
    }
    return 0;
}
