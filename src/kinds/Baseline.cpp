#include "kinds/Baseline.h"

#include "platform/Files.h"
#include "platform/PathTexts.h"
#include "platform/TextLines.h"

#include <algorithm>

namespace velmora {

std::string KeyOf(const Problem& problem) {
    std::string key;
    const auto add = [&](std::string text) {
        std::ranges::replace_if(
            text, [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
        key.append(key.empty() ? "" : "\t").append(text);
    };
    // The text may mention the file.
    for (const std::string_view piece :
         {problem.Rule, std::string_view(problem.File), std::string_view(problem.Record), problem.Field})
        add(PathTexts::ToHostText(piece));
    if (problem.Record.empty() || problem.Field.empty())
        add(PathTexts::ToHostText(problem.Text));
    return key;
}

void Baseline::Read(const std::string& path) {
    known.clear();
    const std::string bytes = Files::ReadWhole(path);
    for (const std::string_view line : TextLines::Split(bytes))
        if (!line.empty())
            ++known[std::string(line)];
}

bool Baseline::Cover(const Problem& problem) {
    const auto found = known.find(KeyOf(problem));
    if (found == known.end() || found->second == 0)
        return false;
    --found->second;
    return true;
}

void Baseline::Add(const Problem& problem) {
    ++known[KeyOf(problem)];
}

std::size_t Baseline::Count() const {
    std::size_t count = 0;
    for (const auto& [key, times] : known)
        count += times;
    return count;
}

void Baseline::Write(const std::string& path) const {
    std::string bytes;
    for (const auto& [key, times] : known)
        for (std::size_t i = 0; i < times; ++i)
            bytes.append(key).append("\n");
    Files::ReplaceSafely(path, bytes);
}

} // namespace velmora
