#include "tools/FilterTile.h"

#include <cmath>
#include <cstring>
#include <utility>

namespace kvx::tool {
namespace {

/** One letter for each site: blanks and the number of a second green ("G2") say nothing about the colour. */
std::string SiteLetters(const char* components) {
    std::string letters;
    for (; *components != '\0'; ++components) {
        if (std::strchr("RGBWY", *components) != nullptr) {
            letters += *components;
        }
    }
    return letters;
}

}  // namespace

FilterTile::FilterTile(const PixelFormat& format)
    : m_letters(SiteLetters(format.components)),
      m_side(static_cast<int>(std::lround(std::sqrt(m_letters.size())))),
      m_rowPhase(static_cast<int>(format.phase >> 1)),
      m_columnPhase(static_cast<int>(format.phase & 1)) {
    if (m_side == 2) {
        // The table goes around a Bayer cell clockwise; larger cells it lists row by row.
        std::swap(m_letters[2], m_letters[3]);
    }
}

}  // namespace kvx::tool
