#pragma once

#include "services/Prompts.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// Something that loading has to tell about a file's text.
struct Finding {
    std::string_view Kind; ///< "event", "upissue" or "sbmodule"
    std::string File;      ///< name without folder, empty for the data directory itself
    std::size_t Line = 0;  ///< 1-based, 0 where no line applies
    std::string_view Rule; ///< stable name, such as "unneeded-space"
    std::string Text;
    Icon MessageIcon = Icon::None;
};

using FindingSink = std::function<void(const Finding&)>;

/// Shows findings as message boxes, one at a time. From the second on the box offers to show the rest as one
/// list, which comes with Finish.
class FindingMessages {
  public:
    void Show(const Finding& finding);
    /// Shows what was collected for the list.
    void Finish();

  private:
    std::size_t shown = 0;
    bool collecting = false;
    std::vector<std::string> collected;
};

} // namespace velmora
