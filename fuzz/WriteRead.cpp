// A record of any texts and numbers, written and read again, is the record that a file can hold: its block
// stays the same for good.
#include "RecordFile.h"
#include "events/clsEvent.h"
#include "sbmodules/clsSBModule.h"
#include "services/modWriter.h"
#include "upissues/clsUPIssue.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider bytes(data, size);
    const velmora::RecordKind& kind =
        *bytes.PickValueInArray({&velmora::EventKind, &velmora::UPIssueKind, &velmora::SBModuleKind});
    const auto record = kind.Make();
    std::string name = bytes.ConsumeRandomLengthString(40);
    // One pass can leave a name that only the next one makes legal.
    for (int pass = 0; pass < 2; ++pass)
        velmora::SanitizeName(name, kind.NameWord);
    kind.Name.SetText(*record, name);
    kind.ForEachField([&](const velmora::Field& field) {
        if (field.SetText != nullptr)
            field.SetText(*record, bytes.ConsumeRandomLengthString(80));
        else
            field.SetNumber(*record, bytes.ConsumeIntegral<std::int32_t>());
    });
    const std::string block = velmora::BlockOf(kind, *record);
    if (velmora::ReadAndWrite(kind, block) != block)
        std::abort();
    return 0;
}
