#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace velmora {

/// Changes of fields that are proposed to a person, who takes or leaves each.
class ChangeList {
  public:
    ChangeList() = default;
    ChangeList(const ChangeList&) = delete;
    ChangeList& operator=(const ChangeList&) = delete;
    virtual ~ChangeList() = default;

    /// A change as it is shown.
    struct Proposal {
        std::string_view Record;
        std::string_view Field;
        std::string Before;
        std::string After;
        std::string Note; ///< what speaks against it, empty for nothing
    };

    [[nodiscard]] virtual std::size_t Count() const = 0;
    /// What it is listed under: its file, or its record.
    [[nodiscard]] virtual std::string_view GroupOf(std::size_t line) const = 0;
    /// Names of its record and its field.
    [[nodiscard]] virtual std::pair<std::string_view, std::string_view> NamesOf(std::size_t line) const = 0;
    [[nodiscard]] virtual Proposal At(std::size_t line) const = 0;
    [[nodiscard]] virtual bool IsTicked(std::size_t line) const = 0;
    /// False for a change that cannot be made.
    [[nodiscard]] virtual bool MayTick(std::size_t line) const = 0;
    /// Has no effect on a change that cannot be made.
    virtual void Tick(std::size_t line, bool ticked) = 0;
};

} // namespace velmora
