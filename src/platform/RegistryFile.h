#pragma once

#include "platform/Registry.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// A registry in the REGEDIT4 text form. What is not changed is written as it was read: comments, blank
/// lines, order, and lines that make no sense.
///
/// Keys are full paths, root name first ("HKEY_LOCAL_MACHINE\Software"), matched without regard to case like
/// names; the empty name is a key's default value. A key whose subkey stands in the file exists, roots always
/// do. Of values listed twice the last counts. Lines after a key that makes no sense belong to no key and
/// count as broken.
class RegistryFile {
  public:
    struct BrokenLine {
        std::size_t Number; ///< from 1, in the text that was read
        std::string Text;
    };

    explicit RegistryFile(std::string_view text = {});

    /// The whole text, its lines ended by CR LF.
    [[nodiscard]] std::string Text() const;
    [[nodiscard]] const std::vector<BrokenLine>& BrokenLines() const { return brokenLines; }

    [[nodiscard]] bool KeyExists(std::string_view key) const;
    /// The value of a name; it stays valid until the next change. Null when absent.
    [[nodiscard]] const RegistryValue* Find(std::string_view key, std::string_view name) const;
    /// Fails for a key that no line can hold.
    Registry::Created CreateKey(std::string_view key);
    /// False, and nothing changed, when the key is a root, is missing or has subkeys.
    bool DeleteKey(std::string_view key);
    /// False, and nothing changed, when the key is missing or no line can hold the name.
    bool SetValue(std::string_view key, std::string_view name, const RegistryValue& value);

  private:
    struct Line {
        std::string Text; ///< several lines of the text for long data
        bool Broken = false;
        std::string Name;
        std::optional<RegistryValue> Value; ///< nothing for other lines than values
    };
    /// A key with its lines. The first section is what stands before all keys.
    struct Section {
        std::string Key; ///< empty: its values belong to no key
        std::vector<Line> Lines;
        [[nodiscard]] bool Is(std::string_view key) const;
    };

    /// Reads what stands at a line; tells how many lines that were.
    std::size_t ReadLine(const std::vector<std::string_view>& lines, std::size_t at);
    void AddLine(Line line, std::size_t at);
    [[nodiscard]] bool HasSubkeys(std::string_view key) const;
    [[nodiscard]] const Line* FindLine(std::string_view key, std::string_view name) const;
    Section& SectionOf(std::string_view key);
    Section& AddSection(std::string_view key);

    std::vector<Section> sections;
    std::vector<BrokenLine> brokenLines;
};

} // namespace velmora
