#pragma once

#include "Canvas.h"

#include <string>

namespace velmora {

/// The kinds of PCX picture that the sample shows off, by bits a plane and planes.
enum class PcxKind { Mono, Sixteen, Palette, TrueColour };

/// Encodes a picture as a PCX file. Mono, Sixteen and Palette pictures are reduced to 2, 16 and 256 colours
/// chosen from the picture and dithered.
std::string EncodePcx(const Bitmap& bitmap, PcxKind kind);

} // namespace velmora
