#pragma once

#include <string_view>

namespace kvx::tool {

/** A file of the page, which is part of the program. */
struct PageFile {
    std::string_view name;
    const char* type;  ///< media type
    std::string_view content;
};

/** The file of this name, index.html for "", or null. */
const PageFile* FindPageFile(std::string_view name);

}  // namespace kvx::tool
