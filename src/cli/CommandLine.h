#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace velmora {

/// The whole program: takes the words after its name (UTF-8), prints, returns the exit status: 0 all well,
/// 1 something was found, 2 bad usage or a failure. `toTerminal` tells that a person looks at the output.
int RunVelwriter(std::vector<std::string> arguments, std::ostream& out, std::ostream& err,
                 bool toTerminal = false);

} // namespace velmora
