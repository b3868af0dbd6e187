#include "services/ProblemMessages.h"

#include <utility>

namespace velmora {

void ProblemMessages::Show(const Problem& problem) {
    // The game has no word for a block without its end; the details of a write tell of it.
    if (problem.Rule == UnfinishedBlockRule)
        return;
    const std::string place = PlaceOf(problem);
    if (AsOneList)
        collected.push_back(place.empty() ? problem.Text : problem.Text + "\r(" + place + ")");
    else if (!std::exchange(anyShown, true))
        gPrompts->Message(problem.Text, problem.MessageIcon, place);
    else
        AsOneList = gPrompts->MessageInSeries(problem.Text, problem.MessageIcon, place);
}

void ProblemMessages::Finish() {
    if (!collected.empty())
        gPrompts->MessageList(collected);
    *this = {};
}

} // namespace velmora
