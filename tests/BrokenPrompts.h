#pragma once

#include "ScriptedPrompts.h"

#include <stdexcept>

namespace velmora {

/// Prompts that break: whatever is asked or told fails, only errors are reported.
class BrokenPrompts : public ScriptedPrompts {
  public:
    void Message(const std::string&, Icon, const std::string&) override { Break(); }
    bool Ask(const Question&) override { return Break(), false; }
    std::string Input(const std::string&) override { return Break(), ""; }
    std::string PickFile(const FileRequest&) override { return Break(), ""; }
    std::string PickFolder(const std::string&, const std::string&) override { return Break(), ""; }
    void ShowTextFile(const std::string&) override { Break(); }

  private:
    static void Break() { throw std::runtime_error("broken"); }
};

} // namespace velmora
