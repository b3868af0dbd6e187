#include "records/LossCounts.h"

namespace velmora {

namespace {

struct LossWords {
    const char* One;
    const char* Many;
};
constexpr LossWords Words[] = {
    {"comment", "comments"},
    {"unrecognized line", "unrecognized lines"},
    {"text after a closing quote", "texts after a closing quote"},
    {"value with blanks in it", "values with blanks in them"},
    {"number cut or rounded", "numbers cut or rounded"},
    {"name made legal", "names made legal"},
    {"value carried over from an earlier block", "values carried over from an earlier block"},
    {"value given again in its block", "values given again in their blocks"},
    {"record dropped for its name", "records dropped for their names"},
    {"block without its end", "blocks without their end"},
};

} // namespace

std::vector<std::string> LossCounts::Texts() const {
    static_assert(std::size(Words) == std::tuple_size_v<decltype(counts)>);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < counts.size(); ++i)
        if (counts[i] > 0)
            texts.push_back(std::to_string(counts[i]) + ' ' +
                            (counts[i] == 1 ? Words[i].One : Words[i].Many));
    return texts;
}

} // namespace velmora
