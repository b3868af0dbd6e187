// Any bytes may come from a client, in any pieces.
#include "lsp/Server.h"
#include "services/Catalogues.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool built = (velmora::BuildCatalogues(), true);
    std::ostringstream out;
    velmora::lsp::Server server(out, built ? 1u << 20 : 0);
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    const std::size_t piece = rest.empty() ? 1 : 1 + data[0];
    while (!rest.empty() && !server.Ended()) {
        server.Receive(rest.substr(0, piece));
        rest.remove_prefix(std::min(piece, rest.size()));
    }
    return 0;
}
