#pragma once

#include "events/clsEvent.h"
#include "records/Preview.h"

namespace velmora {

/// An event as the player meets it: picture, title, what happened, and the three answers with what each does.
/// A sample that is empty for the value of an answer is that value.
Preview PreviewEvent(const clsEvent& event, const SampleNames& samples);

} // namespace velmora
