#pragma once

#include "records/Preview.h"
#include "upissues/clsUPIssue.h"

namespace velmora {

/// A UP issue as the player meets it: the question, and each option with what it does by the issue's type. A
/// type that UPIssueTypes lacks counts as its first entry.
Preview PreviewUPIssue(const clsUPIssue& issue, const SampleNames& samples);

} // namespace velmora
