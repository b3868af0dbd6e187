// Loading a library, beside reading its files and beside other parsers that read the same records.
#include "BenchLibrary.h"
#include "Measure.h"

#include "platform/Files.h"

#include <charconv>
#include <pugixml.hpp>
#include <simdjson.h>

namespace velmora {
namespace {

using Loader = std::function<void(Library&, const BenchLibrary&)>;

void Take(Library& library, std::unique_ptr<clsEvent> event, const std::string& path) {
    event->FileName = path;
    event->ShortName = Files::NameOf(path);
    event->OrigNumber = event->EventNumber = static_cast<std::int32_t>(library.Records.Count()) + 1;
    const std::string_view name = event->EventName;
    library.Records.TryAdd(name, std::move(event));
}

void LoadXml(Library& library, const BenchLibrary& files) {
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
            Take(library, std::move(event), path);
        }
    }
}

void LoadJson(Library& library, const BenchLibrary& files) {
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
            Take(library, std::move(event), path);
        }
    }
}

bool SameContent(const Library& left, const Library& right) {
    if (left.Records.Count() != right.Records.Count())
        return false;
    for (std::size_t i = 0; i < left.Records.Count(); ++i)
        if (BlockOf(EventKind, left.At(i)) != BlockOf(EventKind, right.At(i)))
            return false;
    return true;
}

/// Loading by `load`, beside `yardstick` over the same records.
void Compare(benchmark::State& state, const Loader& load, Limit must,
             const std::function<double(const BenchLibrary&)>& yardstick) {
    const BenchLibrary& files = LibraryOf(static_cast<std::size_t>(state.range(0)));
    Library library(EventKind);
    const double least = LeastTime([&] { load(library, files); }, [&] { library.Clear(); });
    Library right(EventKind);
    LoadInto(right, files);
    if (!SameContent(library, right))
        return state.SkipWithError("the records differ");
    library.Clear();
    right.Clear();
    Tell(state, least, must, yardstick(files));
}

double ScanTime(const BenchLibrary& files) {
    return LeastTime([&] { benchmark::DoNotOptimize(CountNewlines(files.EventPaths)); });
}

double LoadTime(const BenchLibrary& files) {
    Library library(EventKind);
    return LeastTime([&] { LoadInto(library, files); }, [&] { library.Clear(); });
}

void Load(benchmark::State& state) {
    Compare(state, LoadInto, {.Ratio = 6}, ScanTime);
}
VELMORA_MEASURE(Load);

// Of these two the yardstick is our own loading: the ratio has to be above 1.
void LoadByPugixml(benchmark::State& state) {
    Compare(state, LoadXml, {}, LoadTime);
}
VELMORA_MEASURE(LoadByPugixml);

void LoadBySimdjson(benchmark::State& state) {
    Compare(state, LoadJson, {}, LoadTime);
}
VELMORA_MEASURE(LoadBySimdjson);

} // namespace
} // namespace velmora
