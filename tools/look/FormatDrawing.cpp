#include "tools/look/FormatDrawing.h"

#include <fmt/format.h>

#include <array>
#include <vector>

#include "KvxFrame/Packing.h"

namespace kvx::tool {
namespace {

const char* FamilyText(frame::Family family) {
    switch (family) {
        case frame::Family::Mono:
            return "mono";
        case frame::Family::Bayer:
            return "Bayer, 2x2 tile";
        case frame::Family::TrueSense:
            return "TrueSense, 4x4 tile, half of it clear (W)";
        default:
            return "colour";
    }
}

const char* LayoutText(const frame::Format& format) {
    switch (format.layout) {
        case frame::Layout::MsbAligned:
            return "little-endian words, value in the high bits";
        case frame::Layout::BigEndian:
            return "big-endian words, value in the low bits";
        case frame::Layout::Pfnc:
            return "packed as PFNC's \"p\"";
        case frame::Layout::GigE:
            return "packed as GigE Vision's \"Packed\"";
        case frame::Layout::Mipi:
            return "packed as MIPI CSI-2";
        default:
            return format.bits == 8 ? "bytes" : "little-endian words, value in the low bits";
    }
}

/** Which bit of which sample a bit of memory is. */
struct Bit {
    unsigned sample = 0;
    unsigned number = 0;
    bool isUsed = false;
};
using ByteBits = std::array<Bit, 8>;  // bit 0 first

/** Samples after which a packing starts with a byte again. */
unsigned GroupSamples(frame::Packing packing) {
    for (const unsigned samples : {1u, 2u}) {
        if (frame::PackedBytes(packing, samples) * 4 == frame::PackedBytes(packing, 4) * samples) {
            return samples;
        }
    }
    return 4;
}

/** Found by packing samples of a single bit. */
std::vector<ByteBits> BitsOfPacking(frame::Packing packing) {
    const unsigned samples = GroupSamples(packing);
    std::vector<ByteBits> group(frame::PackedBytes(packing, samples));
    for (unsigned sample = 0; sample < samples; ++sample) {
        for (unsigned number = 0; number < frame::PackedDepth(packing); ++number) {
            std::array<uint16_t, 4> words{};
            words[sample] = static_cast<uint16_t>(1u << number);
            std::vector<uint8_t> bytes(group.size());
            frame::PackSamples(packing, words.data(), 0, samples, bytes.data(), bytes.size());
            for (size_t byte = 0; byte < bytes.size(); ++byte) {
                for (unsigned bit = 0; bit < 8; ++bit) {
                    if ((bytes[byte] >> bit & 1) != 0) {
                        group[byte][bit] = {sample, number, true};
                    }
                }
            }
        }
    }
    return group;
}

std::vector<ByteBits> BitsOfWord(const frame::Format& format) {
    std::vector<ByteBits> word(2);
    for (unsigned number = 0; number < format.bits; ++number) {
        const unsigned byte = format.layout == frame::Layout::BigEndian ? 1 - number / 8 : number / 8;
        word[byte][number % 8] = {0, number, true};
    }
    return word;
}

/** Ends a line; blanks that no colour shows are left out. */
void EndLine(std::string& text) {
    text.erase(text.find_last_not_of(' ') + 1);
    text += '\n';
}

std::string BitText(const Bit& bit) {
    return bit.isUsed ? fmt::format("{}{}", static_cast<char>('a' + bit.sample), bit.number) : "-";
}

}  // namespace

std::string DescribeFormat(const frame::Format& format) {
    return fmt::format("{}; {} bits, {}", FamilyText(format.family), format.bits, LayoutText(format));
}

std::string DrawTile(const frame::Format& format, const Paint& paint) {
    std::string text;
    if (format.family == frame::Family::Colour) {
        text += "  ";
        constexpr std::array kOrders = {"RGB", "BGR", "RGBA", "BGRA", "RGBX", "BGRX"};
        for (const char* letter = kOrders.at(static_cast<size_t>(format.order)); *letter != '\0'; ++letter) {
            text += paint.On(*letter, fmt::format(" {} ", *letter));
        }
        EndLine(text);
        return text;
    }
    const uint32_t side = frame::TileSide(format);
    for (uint32_t row = 0; row < side; ++row) {
        text += "  ";
        for (uint32_t column = 0; column < side; ++column) {
            const char filter = frame::FilterAt(format, row, column);
            text += paint.On(filter, fmt::format(" {} ", filter));
        }
        EndLine(text);
    }
    return text;
}

std::string DrawBits(const frame::Format& format, const Paint& paint) {
    if (format.bits == 8 || format.family == frame::Family::Colour) {
        return "";
    }
    const auto packing = frame::PackingOf(format);
    const std::vector<ByteBits> bytes = packing ? BitsOfPacking(*packing) : BitsOfWord(format);
    std::string text;
    for (size_t byte = 0; byte < bytes.size(); ++byte) {
        text += fmt::format("  byte {}  ", byte);
        for (unsigned bit = 8; bit-- > 0;) {
            const Bit& place = bytes[byte][bit];
            const std::string cell = fmt::format(" {:>3} ", BitText(place));
            text += place.isUsed ? paint.On(frame::FilterAt(format, 0, place.sample), cell) : cell;
        }
        EndLine(text);
    }
    return text;
}

}  // namespace kvx::tool
