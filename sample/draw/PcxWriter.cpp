#include "PcxWriter.h"

#include "Quantise.h"

namespace velmora {

namespace {

void PutWord(std::string& out, std::size_t at, int value) {
    out[at] = static_cast<char>(value & 255);
    out[at + 1] = static_cast<char>(value >> 8 & 255);
}

std::string Header(const Bitmap& bitmap, int bits, int planes, int bytesPerLine) {
    std::string header(128, '\0');
    header[0] = 10, header[1] = 5, header[2] = 1, header[3] = static_cast<char>(bits);
    PutWord(header, 8, bitmap.Width - 1);
    PutWord(header, 10, bitmap.Height - 1);
    PutWord(header, 12, 72);
    PutWord(header, 14, 72);
    header[65] = static_cast<char>(planes);
    PutWord(header, 66, bytesPerLine);
    PutWord(header, 68, 1);
    return header;
}

/// One plane of one row in the format's run lengths; a row is padded to an even number of bytes.
void PutRow(std::string& out, std::vector<std::uint8_t> row) {
    if (row.size() % 2 != 0)
        row.push_back(0);
    for (std::size_t i = 0; i < row.size();) {
        std::size_t run = 1;
        while (run < 63 && i + run < row.size() && row[i + run] == row[i])
            ++run;
        if (run > 1 || row[i] >= 0xC0)
            out += static_cast<char>(0xC0 + run);
        out += static_cast<char>(row[i]);
        i += run;
    }
}

void PutPalette(std::string& out, std::size_t at, const std::vector<Rgb>& palette) {
    for (const Rgb& colour : palette)
        for (const std::uint8_t channel : colour)
            out[at++] = static_cast<char>(channel);
}

std::string EncodeTrueColour(const Bitmap& bitmap) {
    std::string out = Header(bitmap, 8, 3, bitmap.Width + bitmap.Width % 2);
    const auto width = static_cast<std::size_t>(bitmap.Width);
    for (std::size_t y = 0; y < static_cast<std::size_t>(bitmap.Height); ++y)
        for (std::size_t channel = 0; channel < 3; ++channel) {
            std::vector<std::uint8_t> row;
            for (std::size_t x = 0; x < width; ++x)
                row.push_back(bitmap.Rgb[(y * width + x) * 3 + channel]);
            PutRow(out, row);
        }
    return out;
}

std::string EncodePalette(const Bitmap& bitmap) {
    const IndexedBitmap indexed = Dither(bitmap, ChoosePalette(bitmap, 256));
    std::string out = Header(bitmap, 8, 1, bitmap.Width + bitmap.Width % 2);
    for (auto row = indexed.Pixels.begin(); row != indexed.Pixels.end(); row += bitmap.Width)
        PutRow(out, {row, row + bitmap.Width});
    out += '\x0C';
    out.resize(out.size() + 768);
    PutPalette(out, out.size() - 768, indexed.Palette);
    return out;
}

std::string EncodeBits(const Bitmap& bitmap, const std::vector<Rgb>& palette, int planes) {
    const IndexedBitmap indexed = Dither(bitmap, palette);
    const int rowBytes = (bitmap.Width + 7) / 8;
    std::string out = Header(bitmap, 1, planes, rowBytes + rowBytes % 2);
    PutPalette(out, 16, palette);
    const auto width = static_cast<std::size_t>(bitmap.Width);
    for (std::size_t start = 0; start < indexed.Pixels.size(); start += width)
        for (int plane = 0; plane < planes; ++plane) {
            std::vector<std::uint8_t> row(static_cast<std::size_t>(rowBytes));
            for (std::size_t x = 0; x < width; ++x)
                if (indexed.Pixels[start + x] >> plane & 1)
                    row[x / 8] = static_cast<std::uint8_t>(row[x / 8] | 0x80 >> x % 8);
            PutRow(out, row);
        }
    return out;
}

} // namespace

std::string EncodePcx(const Bitmap& bitmap, PcxKind kind) {
    switch (kind) {
    case PcxKind::Mono:
        return EncodeBits(bitmap, {Rgb{0, 0, 0}, Rgb{255, 255, 255}}, 1);
    case PcxKind::Sixteen:
        return EncodeBits(bitmap, ChoosePalette(bitmap, 16), 4);
    case PcxKind::TrueColour:
        return EncodeTrueColour(bitmap);
    case PcxKind::Palette:
        break;
    }
    return EncodePalette(bitmap);
}

} // namespace velmora
