#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace velmora {

/// A text to be found in others without regard to letter case, by the code page. It is looked at once, so
/// that going through a library takes little more than reading its memory.
class TextFinder {
  public:
    explicit TextFinder(std::string_view text);

    static constexpr std::size_t None = std::string_view::npos;

    /// The text in lower case.
    [[nodiscard]] const std::string& Folded() const { return folded; }
    /// Where the text first stands in another at or after `from`, None when it does not. An empty text is
    /// never found.
    [[nodiscard]] std::size_t In(std::string_view text, std::size_t from = 0) const;

  private:
    /// A byte of the text in both its forms.
    struct Anchor {
        std::size_t Offset = 0;
        unsigned char Lower = 0;
        unsigned char Upper = 0;

        /// Bit 0 tells whether it stands in its place in a text that begins there.
        [[nodiscard]] unsigned char At(const unsigned char* start, std::size_t i) const {
            return static_cast<unsigned char>((start[Offset + i] == Lower) | (start[Offset + i] == Upper));
        }
    };
    static constexpr std::size_t Block = 32; // places looked at in one go

    [[nodiscard]] bool MayBeginInBlock(const unsigned char* start) const;

    std::string folded;
    bool anchored = false;
    std::array<Anchor, 2> anchors; // those of its bytes that are met least often
};

} // namespace velmora
