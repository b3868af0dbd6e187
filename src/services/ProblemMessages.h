#pragma once

#include "services/Problem.h"

#include <string>
#include <vector>

namespace velmora {

/// Shows the problems of loading as message boxes, one at a time, whose details tell the place. From the
/// second on the box offers to show the rest as one list, which comes with Finish. Once that is taken up, it
/// holds until the program ends.
class ProblemMessages {
  public:
    void Show(const Problem& problem);
    /// Shows what was collected for the list.
    void Finish();

    /// What the user has chosen: problems come as one list.
    static inline bool AsOneList = false;

  private:
    bool anyShown = false;
    std::vector<std::string> collected;
};

} // namespace velmora
