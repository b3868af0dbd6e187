#include "services/Problem.h"

namespace velmora {

std::string PlaceOf(const Problem& problem) {
    std::string place;
    const auto add = [&](std::string_view piece) {
        if (!piece.empty())
            place.append(place.empty() ? "" : ", ").append(piece);
    };
    add(problem.File);
    if (problem.Line > 0)
        add("line " + std::to_string(problem.Line));
    add(problem.Record);
    add(problem.Field);
    return place;
}

} // namespace velmora
