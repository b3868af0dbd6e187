#pragma once

#include "cli/CommandLine.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace velmora {

using Json = nlohmann::ordered_json;

/// One run of the program.
struct CliRun {
    template <class... Words>
    explicit CliRun(Words&&... words) {
        std::ostringstream out;
        std::ostringstream err;
        Status = RunVelwriter({std::string(std::forward<Words>(words))...}, out, err);
        Out = out.str();
        Err = err.str();
    }

    /// The output as JSON; the test fails when it is none.
    [[nodiscard]] Json Parsed() const {
        Json json = Json::parse(Out, nullptr, false);
        EXPECT_FALSE(json.is_discarded()) << Out;
        return json;
    }
    [[nodiscard]] std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        std::istringstream stream(Out);
        for (std::string line; std::getline(stream, line);)
            lines.push_back(line);
        return lines;
    }

    int Status = -1;
    std::string Out;
    std::string Err;
};

/// One property of all entries of a list.
inline std::vector<Json> Values(const Json& list, const std::string& property) {
    std::vector<Json> values;
    for (const Json& entry : list)
        values.push_back(entry[property]);
    return values;
}

inline std::filesystem::path ProjectPath(const std::string& below) {
    return std::filesystem::path(VELMORA_SAMPLE).parent_path().parent_path() / below;
}

inline std::string ReadProjectFile(const std::string& below) {
    std::ifstream file(ProjectPath(below), std::ios::binary);
    EXPECT_TRUE(file) << "missing: " << below;
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Compares with tests/cli/golden/NAME, or rewrites it when VELMORA_REWRITE_GOLDEN is set.
inline void ExpectGolden(const std::string& name, const std::string& text) {
    const std::string below = "tests/cli/golden/" + name;
    if (std::getenv("VELMORA_REWRITE_GOLDEN") != nullptr)
        std::ofstream(ProjectPath(below), std::ios::binary) << text;
    EXPECT_EQ(text, ReadProjectFile(below)) << "rewritten when VELMORA_REWRITE_GOLDEN is set: " << below;
}

} // namespace velmora
