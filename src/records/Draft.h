#pragma once

#include "records/Record.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmora {

/// What is typed over a record and not yet committed.
struct Draft {
    std::string Name;
    bool Adding = false;          ///< the record itself is not yet committed
    std::string File;             ///< the record's
    std::shared_ptr<Record> Base; ///< the record as it was before
    /// What stands in the controls that no longer show the record: name of the control, text as it was typed.
    std::vector<std::pair<std::string, std::string>> Texts;
};

} // namespace velmora
