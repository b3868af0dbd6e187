// Loading a library, beside reading its files and beside other parsers that read the same records.
#include "BenchLibrary.h"
#include "Measure.h"

#include "platform/Files.h"

#include <charconv>
#include <pugixml.hpp>
#include <simdjson.h>

namespace velmora {
namespace {

/// What loading fills: our library, or the records of another parser.
struct Shelf {
    Library Ours{EventKind};
    KeyedCollection<std::unique_ptr<Record>> Theirs;

    void Clear() {
        Ours.Clear();
        Theirs.RemoveAll();
    }
    [[nodiscard]] std::vector<std::string> Blocks() const {
        std::vector<std::string> blocks;
        for (const auto& [name, record] : Ours)
            blocks.push_back(BlockOf(EventKind, record));
        for (const auto& [name, record] : Theirs)
            blocks.push_back(BlockOf(EventKind, *record));
        return blocks;
    }
};

using Loader = std::function<void(Shelf&, const BenchLibrary&)>;

void LoadOurs(Shelf& shelf, const BenchLibrary& files) {
    LoadInto(shelf.Ours, files);
}

void Take(Shelf& shelf, std::unique_ptr<clsEvent> event, const std::string& path) {
    event->FileName = path;
    event->ShortName = Files::NameOf(path);
    event->OrigNumber = event->EventNumber = static_cast<std::int32_t>(shelf.Theirs.Count()) + 1;
    const std::string_view name = event->EventName;
    shelf.Theirs.TryAdd(name, std::move(event));
}

void LoadXml(Shelf& shelf, const BenchLibrary& files) {
    for (const std::string& path : files.XmlPaths) {
        pugi::xml_document document;
        document.load_file(path.c_str());
        for (const pugi::xml_node node : document.child("Events").children()) {
            auto event = std::make_unique<clsEvent>();
            pugi::xml_node value = node.first_child();
            event->EventName = value.child_value();
            // Without a look at the element names: the least that a reader could do.
            for (const Field& field : EventKind.Fields) {
                value = value.next_sibling();
                if (field.Type == FieldType::Text)
                    field.SetText(*event, value.child_value());
                else
                    field.SetNumber(*event, value.text().as_int());
            }
            Take(shelf, std::move(event), path);
        }
    }
}

void LoadJson(Shelf& shelf, const BenchLibrary& files) {
    simdjson::ondemand::parser parser;
    for (const std::string& path : files.JsonPaths) {
        auto bytes = simdjson::padded_string::load(path);
        auto document = parser.iterate(bytes.value());
        for (auto element : document.get_array()) {
            simdjson::ondemand::object object = element.get_object();
            auto event = std::make_unique<clsEvent>();
            event->EventName = std::string_view(object["EventName"].get_string());
            for (const Field& field : EventKind.Fields) {
                auto value = object[field.Key];
                if (field.Type == FieldType::Text)
                    field.SetText(*event, value.get_string());
                else
                    field.SetNumber(*event, static_cast<std::int32_t>(value.get_int64()));
            }
            Take(shelf, std::move(event), path);
        }
    }
}

/// Loading by `load`, beside a yardstick. The two go by turns: the machine has good times and bad ones, and
/// so has the memory that earlier loading left behind.
void Compare(benchmark::State& state, const Loader& load, Limit must, const Loader& yardstick) {
    const BenchLibrary& files = LibraryOf(static_cast<std::size_t>(state.range(0)));
    Shelf shelf;
    Shelf other;
    double beside = 1e9;
    const double least = LeastTime([&] { load(shelf, files); },
                                   [&] {
                                       other.Clear();
                                       beside = std::min(beside, SecondsOf([&] { yardstick(other, files); }));
                                       other.Clear();
                                       shelf.Clear();
                                   });
    LoadOurs(other, files);
    if (shelf.Blocks() != other.Blocks())
        return state.SkipWithError("the records differ");
    Tell(state, least, must, beside);
}

void Load(benchmark::State& state) {
    Compare(state, LoadOurs, {.Ratio = 6}, [](Shelf&, const BenchLibrary& files) {
        benchmark::DoNotOptimize(CountNewlines(files.EventPaths));
    });
}
VELMORA_MEASURE(Load);

// Of these two the yardstick is our own loading: the ratio has to be above 1.
void LoadByPugixml(benchmark::State& state) {
    Compare(state, LoadXml, {}, LoadOurs);
}
VELMORA_MEASURE(LoadByPugixml);

void LoadBySimdjson(benchmark::State& state) {
    Compare(state, LoadJson, {}, LoadOurs);
}
VELMORA_MEASURE(LoadBySimdjson);

} // namespace
} // namespace velmora
