#include "records/Finding.h"

namespace velmora {

void FindingMessages::Show(const Finding& finding) {
    if (collecting)
        collected.push_back(finding.Text);
    else if (shown++ == 0)
        gPrompts->Message(finding.Text, finding.MessageIcon);
    else
        collecting = gPrompts->MessageInSeries(finding.Text, finding.MessageIcon);
}

void FindingMessages::Finish() {
    if (!collected.empty())
        gPrompts->MessageList(collected);
    *this = {};
}

} // namespace velmora
