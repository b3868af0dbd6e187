#include "platform/Pcx.h"

#include "platform/Failure.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace velmora {

namespace {

constexpr std::size_t HeaderSize = 128;
constexpr std::size_t ColourTableAt = 16;
constexpr std::size_t EndPaletteSize = 1 + 3 * 256;
constexpr int MaxSide = 4096;
constexpr std::uint32_t Opaque = 0xFF000000;

using Palette = std::array<std::uint32_t, 256>;

[[noreturn]] void Refuse(const std::string& reason) {
    throw Failure(FailureInvalidArgument, "Unable to read the picture: " + reason);
}

unsigned ByteAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
}

unsigned WordAt(std::string_view bytes, std::size_t at) {
    return ByteAt(bytes, at) | ByteAt(bytes, at + 1) << 8;
}

std::uint32_t Rgb(unsigned red, unsigned green, unsigned blue) {
    return Opaque | red << 16 | green << 8 | blue;
}

struct Header {
    unsigned Version = 0;
    bool RunLengths = false;
    unsigned Bits = 0; ///< a pixel has in one plane
    unsigned Planes = 0;
    unsigned BytesPerLine = 0; ///< of one plane
    int Width = 0;
    int Height = 0;

    [[nodiscard]] bool TrueColour() const { return Bits == 8 && Planes >= 3; }
    [[nodiscard]] unsigned IndexBits() const { return Bits * Planes; }
    [[nodiscard]] bool HasColourTable() const { return Version == 2 || Version == 4 || Version == 5; }
};

Header ReadHeader(std::string_view bytes) {
    if (bytes.size() < HeaderSize || bytes[0] != 0x0A)
        Refuse("it is no PCX file");
    if (ByteAt(bytes, 1) > 5 || ByteAt(bytes, 2) > 1)
        Refuse("it is of an unknown version");
    Header header;
    header.Version = ByteAt(bytes, 1);
    header.RunLengths = bytes[2] == 1;
    header.Bits = ByteAt(bytes, 3);
    header.Planes = ByteAt(bytes, 65);
    header.BytesPerLine = WordAt(bytes, 66);
    header.Width = static_cast<int>(WordAt(bytes, 8)) - static_cast<int>(WordAt(bytes, 4)) + 1;
    header.Height = static_cast<int>(WordAt(bytes, 10)) - static_cast<int>(WordAt(bytes, 6)) + 1;
    return header;
}

void CheckHeader(const Header& header) {
    const unsigned bits = header.Bits;
    if ((bits != 1 && bits != 2 && bits != 4 && bits != 8) || header.Planes < 1 || header.Planes > 4 ||
        (header.IndexBits() > 8 && !header.TrueColour()))
        Refuse("it has an unknown number of colours");
    if (header.Width < 1 || header.Height < 1 || header.BytesPerLine < 1)
        Refuse("it has no area");
    if (header.Width > MaxSide || header.Height > MaxSide)
        Refuse("it is larger than 4096 x 4096");
}

Palette ReadPalette(std::string_view bytes, std::size_t at, std::size_t count) {
    Palette palette;
    palette.fill(Opaque);
    for (std::size_t i = 0; i < count; ++i, at += 3)
        palette[i] = Rgb(ByteAt(bytes, at), ByteAt(bytes, at + 1), ByteAt(bytes, at + 2));
    return palette;
}

Palette Greys(unsigned count) {
    Palette palette;
    palette.fill(Opaque);
    for (unsigned i = 0; i < count; ++i) {
        const unsigned level = i * 255 / (count - 1);
        palette[i] = Rgb(level, level, level);
    }
    return palette;
}

/// The colours of the old adapters, for files from the time before colour tables.
Palette StandardColours() {
    Palette palette;
    palette.fill(Opaque);
    for (unsigned i = 0; i < 16; ++i) {
        const unsigned light = (i & 8) != 0 ? 0x55 : 0;
        const auto level = [&](unsigned bit) { return ((i & bit) != 0 ? 0xAAu : 0u) + light; };
        palette[i] = Rgb(level(4), level(2), level(1));
    }
    palette[6] = Rgb(0xAA, 0x55, 0x00);
    return palette;
}

/// The 256 colours behind the picture's data.
std::optional<Palette> EndPalette(std::string_view bytes, const Header& header) {
    const bool present = header.Version == 5 && header.Bits == 8 && header.Planes == 1 &&
                         bytes.size() >= HeaderSize + EndPaletteSize &&
                         bytes[bytes.size() - EndPaletteSize] == 0x0C;
    if (!present)
        return std::nullopt;
    return ReadPalette(bytes, bytes.size() - EndPaletteSize + 1, 256);
}

Palette HeaderPalette(std::string_view bytes, const Header& header) {
    const unsigned count = 1u << header.IndexBits();
    if (count > 16)
        return Greys(count);
    const Palette table = ReadPalette(bytes, ColourTableAt, 16);
    const bool tableTells = header.HasColourTable() && std::any_of(table.begin(), table.begin() + count,
                                                                   [&](auto c) { return c != table[0]; });
    if (tableTells)
        return table;
    return count == 2 ? Greys(2) : StandardColours();
}

/// Hands out the picture's data byte by byte; a run may go on from one line or plane into the next.
class DataReader {
  public:
    DataReader(std::string_view data, bool hasRuns) : rest(data), runLengths(hasRuns) {}

    [[nodiscard]] bool AtEnd() const { return runLeft == 0 && rest.empty(); }

    /// Fills a line as far as the data goes, zeros after that.
    void Fill(std::vector<unsigned char>& line) {
        std::size_t filled = 0;
        while (filled < line.size() && NextRun()) {
            const std::size_t taken = std::min(runLeft, line.size() - filled);
            std::fill_n(line.begin() + static_cast<std::ptrdiff_t>(filled), taken, value);
            filled += taken;
            runLeft -= taken;
        }
        std::fill(line.begin() + static_cast<std::ptrdiff_t>(filled), line.end(),
                  static_cast<unsigned char>(0));
    }

  private:
    bool NextRun() {
        while (runLeft == 0) {
            if (rest.empty())
                return false;
            value = Take();
            runLeft = 1;
            if (runLengths && (value & 0xC0) == 0xC0) {
                runLeft = rest.empty() ? 0 : value & 0x3F;
                value = rest.empty() ? value : Take();
            }
        }
        return true;
    }

    unsigned char Take() {
        const auto byte = static_cast<unsigned char>(rest.front());
        rest.remove_prefix(1);
        return byte;
    }

    std::string_view rest;
    bool runLengths;
    std::size_t runLeft = 0;
    unsigned char value = 0;
};

/// A pixel's bits in one plane of a line, 0 for a pixel that the line is too short for.
unsigned Sample(const Header& header, const std::vector<unsigned char>& line, unsigned plane, unsigned x) {
    const unsigned at = x * header.Bits / 8;
    if (at >= header.BytesPerLine)
        return 0;
    const unsigned shift = 8 - header.Bits - x * header.Bits % 8;
    return (line[plane * header.BytesPerLine + at] >> shift) & ((1u << header.Bits) - 1);
}

std::uint32_t Pixel(const Header& header, const Palette& palette, const std::vector<unsigned char>& line,
                    unsigned x) {
    const auto sample = [&](unsigned plane) { return Sample(header, line, plane, x); };
    if (header.TrueColour())
        return Rgb(sample(0), sample(1), sample(2));
    unsigned index = 0;
    for (unsigned plane = 0; plane < header.Planes; ++plane)
        index |= sample(plane) << (plane * header.Bits);
    return palette[index];
}

} // namespace

Picture DecodePcx(std::string_view bytes) {
    const Header header = ReadHeader(bytes);
    CheckHeader(header);
    const std::optional<Palette> endPalette = EndPalette(bytes, header);
    if (endPalette)
        bytes.remove_suffix(EndPaletteSize);
    const Palette palette = endPalette            ? *endPalette
                            : header.TrueColour() ? Greys(256)
                                                  : HeaderPalette(bytes, header);

    const auto width = static_cast<unsigned>(header.Width);
    const auto height = static_cast<unsigned>(header.Height);
    Picture picture{header.Width, header.Height, {}};
    picture.Pixels.assign(static_cast<std::size_t>(width) * height, palette[0]);
    DataReader data(bytes.substr(HeaderSize), header.RunLengths);
    std::vector<unsigned char> line(static_cast<std::size_t>(header.BytesPerLine) * header.Planes);
    auto pixel = picture.Pixels.begin();
    for (unsigned y = 0; y < height && !data.AtEnd(); ++y) {
        data.Fill(line);
        for (unsigned x = 0; x < width; ++x)
            *pixel++ = Pixel(header, palette, line, x);
    }
    return picture;
}

} // namespace velmora
