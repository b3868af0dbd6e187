#include "BenchLibrary.h"

#include "TempFolder.h"
#include "platform/Files.h"

#include <cstring>
#include <map>
#include <memory>
#include <random>

namespace velmora {

namespace {

/// Plain words, so that no form needs escapes.
std::string Words(std::mt19937& random, std::size_t length) {
    static const char* const words[] = {"planet",  "colony", "of",      "the",   "strange",
                                        "raiders", "moons",  "council", "a",     "tax",
                                        "on",      "and",    "engine",  "quiet", "100%%"};
    std::string text;
    while (text.size() < length)
        text.append(words[random() % std::size(words)]).append(" ");
    text.pop_back();
    return text;
}

clsEvent MakeEvent(std::mt19937& random, std::size_t number) {
    clsEvent event;
    for (const Field& field : EventKind.Fields)
        if (field.Type == FieldType::Number)
            field.SetNumber(event, field.Key.find("Str0") == std::string_view::npos
                                       ? static_cast<std::int32_t>(random() % 2)
                                       : 0);
    event.EventName = "Event_" + std::to_string(random() % 1000000) + "_" + std::to_string(number);
    event.Title = Words(random, 24);
    event.Description = Words(random, 380);
    event.Image = R"(Gfx\\Picture)" + std::to_string(number % 50) + ".pcx";
    event.GoodOption = Words(random, 90);
    event.NeutralOption = Words(random, 80);
    event.EvilOption = Words(random, 90);
    event.GoodValue = static_cast<std::int32_t>(random() % 200);
    event.MoralityWeight = 1 + static_cast<std::int32_t>(random() % 5);
    return event;
}

void AppendXml(const clsEvent& event, std::string& text) {
    const auto add = [&](std::string_view key, const std::string& value) {
        text.append("  <").append(key).append(">").append(value).append("</").append(key).append(">\n");
    };
    text += "<Event>\n";
    add("EventName", event.EventName);
    for (const Field& field : EventKind.Fields)
        add(field.Key,
            field.Type == FieldType::Text ? field.TextOf(event) : std::to_string(field.NumberOf(event)));
    text += "</Event>\n";
}

void AppendJson(const clsEvent& event, std::string& text) {
    const auto quoted = [](std::string value) {
        for (std::size_t at = 0; (at = value.find('\\', at)) != std::string::npos; at += 2)
            value.insert(at, 1, '\\');
        return '"' + value + '"';
    };
    text += "{\n  \"EventName\": " + quoted(event.EventName);
    for (const Field& field : EventKind.Fields)
        text.append(",\n  \"").append(field.Key).append("\": ").append(
            field.Type == FieldType::Text ? quoted(field.TextOf(event))
                                          : std::to_string(field.NumberOf(event)));
    text += "\n},\n";
}

struct Kept {
    TempFolder Folder;
    BenchLibrary Library;

    std::string Write(const std::string& name, const std::string& text) {
        Folder.Write(name, text);
        return Folder / name;
    }
};

void CopyPictures(Kept& kept) {
    const std::string folder = VELMORA_SAMPLE "/GFX/";
    const std::vector<std::string> pictures = Files::ListFiles(folder);
    for (std::size_t i = 0; i < 50; ++i)
        kept.Write("GFX/Picture" + std::to_string(i) + ".pcx",
                   Files::ReadWhole(folder + pictures[i % pictures.size()]));
}

std::unique_ptr<Kept> MakeLibrary(std::size_t events) {
    auto kept = std::make_unique<Kept>();
    BenchLibrary& library = kept->Library;
    library.Game = kept->Folder.Path();
    library.Folder = library.Game + "Data" + Files::Separator;
    CopyPictures(*kept);
    std::mt19937 random(1);
    std::string text;
    std::string xml;
    std::string json;
    for (std::size_t i = 0; i < events; ++i) {
        const clsEvent event = MakeEvent(random, i);
        AppendBlock(EventKind, event, text);
        AppendXml(event, xml);
        AppendJson(event, json);
        if (i % 200 != 199 && i + 1 < events)
            continue;
        const std::string number = std::to_string(1000 + i / 200);
        library.EventPaths.push_back(kept->Write("Data/Bench" + number + ".event", text));
        library.XmlPaths.push_back(kept->Write("xml/" + number + ".xml", "<Events>\n" + xml + "</Events>\n"));
        json.resize(json.size() - 2); // the last comma
        library.JsonPaths.push_back(kept->Write("json/" + number + ".json", "[" + json + "]\n"));
        library.Bytes += text.size();
        text.clear();
        xml.clear();
        json.clear();
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

void LoadInto(Library& library, const BenchLibrary& files) {
    library.Clear();
    LoadRequest request;
    request.Folder = files.Folder;
    request.OwnFile = "MyEvents.event";
    request.Problems = [](const Problem&) {};
    library.Load(request);
}

std::size_t CountNewlines(const std::vector<std::string>& paths) {
    std::size_t count = 0;
    std::string bytes;
    for (const std::string& path : paths) {
        Files::ReadWhole(path, bytes);
        const char* const end = bytes.data() + bytes.size();
        for (const char* at = bytes.data();
             (at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)))); ++at)
            ++count;
    }
    return count;
}

} // namespace velmora
