#include "BenchLibrary.h"

#include "TempFolder.h"
#include "events/clsEvent.h"
#include "platform/Files.h"

#include <cstring>
#include <map>
#include <memory>
#include <random>

namespace velmora {

namespace {

std::string Words(std::mt19937& random, std::size_t length) {
    static const char* const words[] = {"planet", "colony",  "of",    "the",  "strange", "raiders",
                                        "%s",     "council", "a",     "tax",  "on",      "and",
                                        "engine", "quiet",   "100%%", "moons"};
    std::string text;
    while (text.size() < length)
        text.append(words[random() % std::size(words)]).append(" ");
    return text;
}

clsEvent MakeEvent(std::mt19937& random, std::size_t number) {
    clsEvent event;
    event.EventName = "Event_" + std::to_string(random() % 1000000) + "_" + std::to_string(number);
    event.Title = Words(random, 24);
    event.Description = Words(random, 380);
    event.Image = "Gfx\\\\Picture" + std::to_string(number % 50) + ".pcx";
    event.GoodOption = Words(random, 90);
    event.NeutralOption = Words(random, 80);
    event.EvilOption = Words(random, 90);
    for (const Field& field : EventKind.Fields)
        if (field.Type == FieldType::Number)
            field.SetNumber(event, static_cast<std::int32_t>(random() % 200));
    return event;
}

struct Kept {
    TempFolder Folder;
    BenchLibrary Library;
};

std::unique_ptr<Kept> MakeLibrary(std::size_t events) {
    auto kept = std::make_unique<Kept>();
    kept->Library.Folder = kept->Folder.Path();
    std::mt19937 random(1);
    std::string text;
    for (std::size_t i = 0; i < events; ++i) {
        AppendBlock(EventKind, MakeEvent(random, i), text);
        if (i % 200 == 199 || i + 1 == events) {
            const std::string name = "Bench" + std::to_string(1000 + i / 200) + ".event";
            kept->Folder.Write(name, text);
            kept->Library.Paths.push_back(kept->Library.Folder + name);
            kept->Library.Bytes += text.size();
            text.clear();
        }
    }
    return kept;
}

} // namespace

const BenchLibrary& LibraryOf(std::size_t events) {
    static std::map<std::size_t, std::unique_ptr<Kept>> made;
    auto& kept = made[events];
    if (!kept)
        kept = MakeLibrary(events);
    return kept->Library;
}

std::size_t CountNewlines(const BenchLibrary& library) {
    std::size_t count = 0;
    for (const std::string& path : library.Paths) {
        const std::string bytes = Files::ReadWhole(path);
        const char* const end = bytes.data() + bytes.size();
        for (const char* at = bytes.data();
             (at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)))); ++at)
            ++count;
    }
    return count;
}

} // namespace velmora
