#include "tools/tune/PageFiles.h"

#include <algorithm>
#include <array>

// The symbols are those of PageBytes.S.
#define KVX_PAGE(name, file, type) extern "C" const char kvx##name##Begin[], kvx##name##End[];
#include "tools/tune/PageList.h"
#undef KVX_PAGE

namespace kvx::tool {

const PageFile* FindPageFile(std::string_view name) {
#define KVX_PAGE(name, file, type) PageFile{file, type, {kvx##name##Begin, kvx##name##End}},
    static const std::array files = {
#include "tools/tune/PageList.h"
    };
#undef KVX_PAGE
    if (name.empty()) return &files.front();
    const auto found = std::ranges::find(files, name, &PageFile::name);
    return found == files.end() ? nullptr : &*found;
}

}  // namespace kvx::tool
